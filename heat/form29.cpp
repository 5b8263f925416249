#include "heat/form29.h"

#include "frame/looks.h"
#include "heat/commodity_editor.h"
#include "heat/form5.h"
#include "heat/heat_grid.h"
#include "ui_form29.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

Form29::Form29(Environment& environment, Windows& windows)
    : environment_(environment),
      windows_(windows),
      ui_(std::make_unique<Ui::Form29>()),
      commodities_(environment.stores, environment.globals, environment.clock, environment.shell,
                   rankingGrid_, historyGrid_),
      collectorLaunch_(environment.stores, environment.globals, environment.dialogs,
                       environment.processes) {
    ui_->setupUi(this);
    dressControls();
    connectControls();
    connectMenu();
    Form_Load();
}

Form29::~Form29() = default;

void Form29::dressControls() {
    ui_->Command9->setIcon(updateIcon());
    ui_->Command2->setIcon(searchIcon());
    showGrids(*ui_->MSHFlexGrid1,
              u"最近一天没有采集到商品\n\n选“显示全部商品”再点“显示排名”，或点“采集”启动采集程序\n"
              u"点右键可以添加商品"_s,
              *ui_->MSHFlexGrid2);
    ui_->tables->setStretchFactor(0, 0);
    ui_->tables->setStretchFactor(1, 1);
    ui_->tables->setSizes({340, 380});
    ui_->historyAndPlot->setSizes({1100, 900});
}

void Form29::connectControls() {
    connect(ui_->Text3, &QLineEdit::textChanged, this, [this](const QString& typed) {
        writeCommodityAttention(environment_.stores.heat, typed);
    });
    connect(ui_->Command1, &QPushButton::clicked, this,
            [this] { collectorLaunch_.launch(collectCommodities); });
    connect(ui_->Command2, &QPushButton::clicked, this, &Form29::Command2_Click);
    connect(ui_->Text1, &QLineEdit::returnPressed, this, &Form29::Command2_Click);
    connect(ui_->Command9, &QPushButton::clicked, this, &Form29::Command9_Click);
    connect(ui_->MSHFlexGrid1, &GridView::gridPressed, this,
            [this](int row, int, Qt::MouseButton button) { MSHFlexGrid1_MouseDown(row, button); });
    connect(ui_->MSHFlexGrid1, &GridView::gridDoubleClicked, this,
            [this] { commodities_.openSearchPage(); });
}

void Form29::connectMenu() {
    kuaijiemenu_.setObjectName(u"kuaijiemenu"_s);
    kuaijiemenu_.addActions({ui_->打开采集网页, ui_->添加商品, ui_->修改商品, ui_->删除商品});
    connect(ui_->打开采集网页, &QAction::triggered, this,
            [this] { commodities_.openSearchPage(); });
    connect(ui_->添加商品, &QAction::triggered, this, &Form29::添加商品_Click);
    connect(ui_->修改商品, &QAction::triggered, this, [this] { windows_.openAnew<Form5>(); });
    connect(ui_->删除商品, &QAction::triggered, this, &Form29::删除商品_Click);
}

// The attention is shown through its box, whose handler writes it back.
void Form29::Form_Load() {
    if (const std::optional<QString> attention = commodities_.readSettings()) {
        const QSignalBlocker quiet = quietIfHeld(ui_->Text3, environment_.stores.heat);
        ui_->Text3->setText(*attention);
    }
    Command9_Click();
}

void Form29::Command2_Click() {
    find(ui_->Text1->text());
}

void Form29::Command9_Click() {
    commodities_.showRanking(ui_->Check2->isChecked());
}

void Form29::MSHFlexGrid1_MouseDown(int row, Qt::MouseButton button) {
    const bool wantsMenu = button == Qt::RightButton && row != 0;
    if (!commodities_.choose(row)) {
        if (wantsMenu) {
            openMenu(false);
        }
        return;
    }
    ui_->Text1->setText(commodities_.current());
    ui_->plot->showDays({});
    if (wantsMenu) {
        biaoji(rankingGrid_, row);
        openMenu(true);
    }
    ui_->plot->showDays(commodities_.showHistory());
}

// Beside the commodities, and where there is none, one can still be added.
void Form29::openMenu(bool onCommodity) {
    for (QAction* entry : {ui_->打开采集网页, ui_->修改商品, ui_->删除商品}) {
        entry->setEnabled(onCommodity);
    }
    kuaijiemenu_.popup(ui_->MSHFlexGrid1->pressPosition());
}

void Form29::添加商品_Click() {
    environment_.globals.dangqianshangpin.clear();
    windows_.openAnew<Form5>();
}

void Form29::删除商品_Click() {
    // While the question stands another commodity may become the current one.
    const QString name = commodities_.current();
    if (deleteCommodity(environment_.stores, environment_.dialogs, name)) {
        emptyHeatGrid(historyGrid_);
        ui_->plot->showDays({});
        Command9_Click();
    }
}

}  // namespace guanchao
