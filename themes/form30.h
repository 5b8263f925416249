// Form30, "自选股": the watchlist with its quotes. Table zixuangu joined with the code table dmb;
// the rules are in Watchlist. A press on a row hands its stock over in dangqiandm and dangqianjc.
#pragma once

#include <QDialog>
#include <QMenu>
#include <memory>

#include "base/runs.h"
#include "frame/environment.h"
#include "frame/windows.h"
#include "grid/result_grid.h"
#include "themes/watchlist.h"

namespace Ui {
class Form30;
}

namespace guanchao {

class Form30 : public QDialog {
    Q_OBJECT

public:
    Form30(Environment& environment, Windows& windows);
    ~Form30() override;

private:
    void MSHFlexGrid1_RowChosen(int row);
    void 添加个股监控_Click();
    void 添加自选股_Click();
    void 从自选股删除_Click();
    void 操作个股文章_Click();

    Environment& environment_;
    Windows& windows_;
    std::unique_ptr<Ui::Form30> ui_;
    ResultGrid grid_;
    Watchlist watchlist_;
    QMenu kuaimenu_;  // 快捷菜单: on a stock
    Runs runs_;
};

}  // namespace guanchao
