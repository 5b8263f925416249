#include "themes/form22.h"

#include <QHeaderView>
#include <algorithm>

#include "base/values.h"
#include "grid/row_menu.h"
#include "store/patience.h"
#include "ui_form22.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

Form22::Form22(Environment& environment, Windows&)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      ui_(std::make_unique<Ui::Form22>()),
      stockThemes_(environment.stores, environment.globals, environment.clock, environment.dialogs,
                   environment.edits, grid_),
      runs_(environment.failures) {
    ui_->setupUi(this);
    grid_.setKeyColumns({2});
    ui_->MSHFlexGrid1->setGrid(grid_);
    ui_->MSHFlexGrid1->allowExport(environment_.dialogs, environment_.failures);
    ui_->MSHFlexGrid1->setHint(u"此股票还不属于任何主题\n\n在主窗口为主题添加个股"_s);
    picker_ = new PickerBox(*ui_->Text1, *ui_->List1, environment_.stores.main, this);
    kuaijiemenu_.setObjectName(u"kuaijiemenu"_s);
    fillRowMenu(kuaijiemenu_, {ui_->添加到主题, ui_->从该主题删除}, {ui_->从该主题删除});
    // The name belongs to the code that was listed.
    connect(ui_->Text1, &QLineEdit::textChanged, ui_->Label7, &QLabel::clear);
    connect(ui_->Command9, &QPushButton::clicked, this, &Form22::Command9_Click);
    connect(picker_, &PickerBox::chosen, this, &Form22::Command9_Click);
    ui_->MSHFlexGrid1->setSortable();
    ui_->MSHFlexGrid1->setRowMenu(kuaijiemenu_);
    connect(ui_->MSHFlexGrid1, &GridView::rowChosen, this, &Form22::MSHFlexGrid1_RowChosen);
    connect(ui_->添加到主题, &QAction::triggered, this, &Form22::添加到主题_Click);
    connect(ui_->从该主题删除, &QAction::triggered, this, &Form22::从该主题删除_Click);
    Form_Load();
}

Form22::~Form22() = default;

void Form22::Form_Load() {
    stockThemes_.load([this](const StockThemes::Stock& stock) {
        setWindowTitle(stock.caption);
        ui_->Text1->setText(stock.code);
        ui_->Label7->setText(shortened(stock.jc, longestShownName));
    });
    picker_->hideList();
    // The codes have a font of their own.
    GridView& view = *ui_->MSHFlexGrid1;
    const int height =
        QFontMetrics(fontOf(grid_, std::min(1, grid_.cols() - 1), view.font())).height();
    view.verticalHeader()->setDefaultSectionSize(height + 6);
}

void Form22::readAgain() {
    runs_.start([this](std::stop_token stop) -> QCoro::Task<> {
        const auto step = [this] { stockThemes_.readAgain(); };
        co_await patiently(step, stop);
    });
}

void Form22::Command9_Click() {
    if (stockThemes_.find(ui_->Text1->text())) {
        Form_Load();
    }
}

void Form22::MSHFlexGrid1_RowChosen(int row) {
    if (row > 0) {
        environment_.globals.dangqiandm = grid_.textMatrix(row, 1);
        environment_.globals.dangqianjc = grid_.textMatrix(row, 2);
    }
}

void Form22::添加到主题_Click() {
    runs_.start([this](std::stop_token stop) -> QCoro::Task<> {
        const bool joined = co_await stockThemes_.joinAnother(stop);
        if (joined) {
            Command9_Click();
        }
    });
}

void Form22::从该主题删除_Click() {
    stockThemes_.leave();
    Command9_Click();
}

}  // namespace guanchao
