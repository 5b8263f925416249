// Form29, "商品价格监控--因特网数据采集": commodities by the rising and falling words of the web,
// the history of one with its plot, and the list of what is collected. Tables shopname, shophq and
// canshu of the heat store; the rules are in HeatRanking, CommodityEditor and CollectorLaunch.
#pragma once

#include <QMenu>
#include <memory>

#include "base/runs.h"
#include "frame/undo_line.h"
#include "frame/windows.h"
#include "heat/heat_window.h"

namespace Ui {
class Form29;
}

namespace guanchao {

class Form29 : public HeatWindow {
    Q_OBJECT

public:
    Form29(Environment& environment, Windows& windows);
    ~Form29() override;

private:
    void dressControls();
    void connectControls();
    void connectMenu();
    void Form_Load();

    void enableEntries(int row);
    void 添加商品_Click();
    void 删除商品_Click();

    Windows& windows_;
    std::unique_ptr<Ui::Form29> ui_;
    QMenu kuaijiemenu_;  // 快捷菜单: on a commodity, or on the empty ground to add one
    std::unique_ptr<UndoLine> undoLine_;
    Runs runs_;
};

}  // namespace guanchao
