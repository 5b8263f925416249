// Form22, "属于板块": the themes that one stock belongs to. Table dzhzhuti, names from the code
// table dmb; the rules are in StockThemes. It takes dangqiandm and dangqianjc over at its load.
#pragma once

#include <QDialog>
#include <QMenu>
#include <memory>

#include "base/runs.h"
#include "frame/environment.h"
#include "frame/windows.h"
#include "grid/picker_box.h"
#include "grid/result_grid.h"
#include "themes/stock_themes.h"

namespace Ui {
class Form22;
}

namespace guanchao {

class Form22 : public QDialog {
    Q_OBJECT

public:
    Form22(Environment& environment, Windows& windows);
    ~Form22() override;

    // What the main window has changed, of the stock that is listed.
    void readAgain();

private:
    void Form_Load();
    void Command9_Click();
    void MSHFlexGrid1_RowChosen(int row);
    void 添加到主题_Click();
    void 从该主题删除_Click();

    Environment& environment_;
    std::unique_ptr<Ui::Form22> ui_;
    ResultGrid grid_;
    StockThemes stockThemes_;
    PickerBox* picker_ = nullptr;
    QMenu kuaijiemenu_;  // 快捷菜单: on a theme of the stock
    Runs runs_;
};

}  // namespace guanchao
