#include "themes/form30.h"

#include "articles/form27.h"
#include "base/values.h"
#include "grid/row_menu.h"
#include "market/form11.h"
#include "market/form21.h"
#include "monitor/form7.h"
#include "ui_form30.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

Form30::Form30(Environment& environment, Windows& windows)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      windows_(windows),
      ui_(std::make_unique<Ui::Form30>()),
      watchlist_(environment.stores, environment.dialogs, environment.removals),
      runs_(environment.failures) {
    ui_->setupUi(this);
    ui_->MSHFlexGrid1->setGrid(grid_);
    ui_->MSHFlexGrid1->allowExport(environment_.dialogs, environment_.failures);
    ui_->MSHFlexGrid1->setHint(
        u"还没有自选股\n\n在主窗口的个股表里右击一只股票，选“添加到自选股”"_s);
    kuaimenu_.setObjectName(u"kuaimenu"_s);
    kuaimenu_.setTitle(u"快捷菜单"_s);
    fillRowMenu(kuaimenu_,
                {ui_->当前行情, ui_->F10资料, ui_->添加个股监控, ui_->操作个股文章,
                 ui_->从自选股删除, ui_->添加自选股},
                {ui_->从自选股删除});
    ui_->MSHFlexGrid1->setSortable();
    ui_->MSHFlexGrid1->setRowMenu(kuaimenu_);
    connect(ui_->MSHFlexGrid1, &GridView::rowChosen, this, &Form30::MSHFlexGrid1_RowChosen);
    connect(ui_->当前行情, &QAction::triggered, this, [this] { windows_.openAnew<Form21>(); });
    connect(ui_->F10资料, &QAction::triggered, this, [this] { windows_.openAnew<Form11>(); });
    connect(ui_->添加个股监控, &QAction::triggered, this, &Form30::添加个股监控_Click);
    connect(ui_->添加自选股, &QAction::triggered, this, &Form30::添加自选股_Click);
    connect(ui_->从自选股删除, &QAction::triggered, this, &Form30::从自选股删除_Click);
    connect(ui_->操作个股文章, &QAction::triggered, this, &Form30::操作个股文章_Click);
    watchlist_.list(grid_);
}

Form30::~Form30() = default;

void Form30::MSHFlexGrid1_RowChosen(int row) {
    if (row > 0) {
        environment_.globals.dangqiandm = trimBlanks(grid_.textMatrix(row, 1));
        environment_.globals.dangqianjc = trimBlanks(grid_.textMatrix(row, 2));
    }
}

void Form30::添加个股监控_Click() {
    environment_.globals.bianjimoshi = 0;
    windows_.openAnew<Form7>();
}

void Form30::添加自选股_Click() {
    runs_.start([this](std::stop_token stop) -> QCoro::Task<> {
        const bool added = co_await watchlist_.addTyped(stop, {});
        if (added) {
            watchlist_.list(grid_);
        }
    });
}

void Form30::从自选股删除_Click() {
    watchlist_.remove(environment_.globals.dangqiandm, environment_.globals.dangqianjc);
    watchlist_.list(grid_);
}

void Form30::操作个股文章_Click() {
    Globals& globals = environment_.globals;
    globals.wenzhangdalei = u"个股"_s;
    globals.wenzhangxiaolei = globals.dangqiandm + globals.dangqianjc;
    windows_.openAnew<Form27>();
}

}  // namespace guanchao
