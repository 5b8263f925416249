#include "heat/form29.h"

#include "grid/row_menu.h"
#include "heat/collector_contract.h"
#include "heat/commodity_editor.h"
#include "heat/form5.h"
#include "heat/heat_subjects.h"
#include "ui_form29.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

Form29::Form29(Environment& environment, Windows& windows)
    : HeatWindow(environment, commodityPrices()),
      windows_(windows),
      ui_(std::make_unique<Ui::Form29>()),
      runs_(environment.failures) {
    ui_->setupUi(this);
    connectMenu();
    dressControls();
    connectControls();
    undoLine_ = std::make_unique<UndoLine>(*ui_->removedWords, *ui_->undo, environment_,
                                           commodityPlace, [this] { Command9_Click(); });
    Form_Load();
}

Form29::~Form29() = default;

void Form29::dressControls() {
    take({ui_->Text1, ui_->Check2, ui_->Command1, ui_->Command2, ui_->Command9, ui_->heatMap,
          ui_->打开热度图, ui_->MSHFlexGrid1, ui_->MSHFlexGrid2, ui_->plot},
         u"最近一天没有采集到商品\n\n选“显示全部商品”再点“显示排名”，或点“采集”启动采集程序\n"
         u"点右键可以添加商品"_s);
    ui_->tables->setStretchFactor(0, 0);
    ui_->tables->setStretchFactor(1, 1);
    ui_->tables->setSizes({340, 380});
    ui_->historyAndPlot->setSizes({1100, 900});
}

void Form29::connectControls() {
    connect(ui_->Text3, &QLineEdit::textChanged, this, [this](const QString& typed) {
        writeCommodityAttention(environment_.stores.heat, typed);
    });
}

void Form29::connectMenu() {
    kuaijiemenu_.setObjectName(u"kuaijiemenu"_s);
    fillRowMenu(kuaijiemenu_,
                {ui_->打开采集网页, ui_->打开热度图, ui_->添加商品, ui_->修改商品, ui_->删除商品},
                {ui_->删除商品});
    ui_->MSHFlexGrid1->setRowMenu(kuaijiemenu_, GridView::MenuArea::rowsAndGround);
    connect(ui_->MSHFlexGrid1, &GridView::rowChosen, this, &Form29::enableEntries);
    connect(ui_->打开采集网页, &QAction::triggered, this, [this] { openSearchPage(); });
    connect(ui_->添加商品, &QAction::triggered, this, &Form29::添加商品_Click);
    connect(ui_->修改商品, &QAction::triggered, this, [this] { windows_.openAnew<Form5>(); });
    connect(ui_->删除商品, &QAction::triggered, this, &Form29::删除商品_Click);
}

// The attention is shown through its box, whose handler writes it back.
void Form29::Form_Load() {
    if (const auto stored = readCommoditySettings(environment_.stores.heat)) {
        yinqingurl_ = stored->searchTemplate;
        const QSignalBlocker quiet = quietIfHeld(ui_->Text3);
        ui_->Text3->setText(stored->attention);
    }
    Command9_Click();
}

// Beside the commodities, and where there is none, one can still be added.
void Form29::enableEntries(int row) {
    for (QAction* entry : {ui_->打开采集网页, ui_->修改商品, ui_->删除商品}) {
        entry->setEnabled(row > 0);
    }
}

void Form29::添加商品_Click() {
    environment_.globals.dangqianshangpin.clear();
    windows_.openAnew<Form5>();
}

void Form29::删除商品_Click() {
    runs_.start([this](std::stop_token stop) -> QCoro::Task<> {
        const bool deleted =
            co_await deleteCommodity(environment_.stores, environment_.dialogs,
                                     environment_.removals, ranking_.current(), stop);
        if (deleted) {
            undoLine_->showLast();
            emptyHistory();
            Command9_Click();
        }
    });
}

}  // namespace guanchao
