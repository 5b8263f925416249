#include "articles/form27.h"

#include <QScopeGuard>
#include <QSignalBlocker>

#include "articles/article_removal.h"
#include "articles/form26.h"
#include "grid/row_menu.h"
#include "ui_form27.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

Form27::Form27(Environment& environment, Windows& windows)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      windows_(windows),
      ui_(std::make_unique<Ui::Form27>()),
      browser_(environment.stores, environment.globals, environment.clock, environment.dialogs,
               environment.removals, grid_),
      runs_(environment.failures) {
    ui_->setupUi(this);
    ui_->MSHFlexGrid1->setGrid(grid_);
    ui_->MSHFlexGrid1->allowExport(environment_.dialogs, environment_.failures);
    ui_->MSHFlexGrid1->setHint(u"没有符合条件的文章\n\n点“新建”写一篇"_s);
    first_ = new DateBoxes(*ui_->Combo1, *ui_->Combo2, *ui_->Combo3, this);
    last_ = new DateBoxes(*ui_->Combo4, *ui_->Combo5, *ui_->Combo6, this);
    picker_ = new PickerBox(*ui_->Text3, *ui_->List1, environment_.stores.main, this);
    picker_->showWholeLinesAbove();
    kuaimenu_.setObjectName(u"kuaimenu"_s);
    kuaimenu_.setTitle(u"快捷菜单"_s);
    fillRowMenu(kuaimenu_, {ui_->打开文章, ui_->删除本篇, ui_->删除本表, ui_->kkshuaxin},
                {ui_->删除本篇, ui_->删除本表});
    connectControls();
    undoLine_ = std::make_unique<UndoLine>(*ui_->removedWords, *ui_->undo, environment_,
                                           articleWindowPlace, [this] { Form_Load(); });
    Form_Load();
}

Form27::~Form27() = default;

void Form27::connectControls() {
    connect(ui_->Check1, &QCheckBox::toggled, this, &Form27::Check1_Click);
    connect(ui_->Combo7, &QComboBox::activated, this, &Form27::Combo7_Click);
    connect(ui_->Command1, &QPushButton::clicked, this, &Form27::Command1_Click);
    connect(ui_->Command2, &QPushButton::clicked, this, &Form27::Command2_Click);
    connect(ui_->Command3, &QPushButton::clicked, this, &Form27::Command3_Click);
    ui_->MSHFlexGrid1->setSortable({u"日期"_s});
    ui_->MSHFlexGrid1->setRowMenu(kuaimenu_);
    connect(ui_->MSHFlexGrid1, &GridView::rowChosen, this, &Form27::MSHFlexGrid1_RowChosen);
    connect(ui_->MSHFlexGrid1, &GridView::rowDoubleClicked, this, &Form27::打开文章_Click);
    connect(ui_->MSHFlexGrid1, &GridView::enterPressed, this, &Form27::打开文章_Click);
    connect(ui_->打开文章, &QAction::triggered, this, &Form27::打开文章_Click);
    connect(ui_->删除本篇, &QAction::triggered, this, &Form27::删除本篇_Click);
    connect(ui_->删除本表, &QAction::triggered, this, &Form27::删除本表_Click);
    connect(ui_->kkshuaxin, &QAction::triggered, this, &Form27::Form_Load);
}

void Form27::Form_Load() {
    const BrowserLoad load = browser_.load();
    first_->setTexts(load.first);
    last_->setTexts(load.last);
    ui_->Combo7->refill(load.lists.categories);
    ui_->Combo8->refill(load.lists.subcategories);
    ui_->Combo9->refill(load.lists.authors);
    if (!load.contextKind.isEmpty()) {
        ui_->Combo7->setText(load.contextKind);
        ui_->Combo8->setText(load.contextValue);
    }
    {
        const QSignalBlocker once(ui_->Check1);
        ui_->Check1->setChecked(load.contextKind.isEmpty());
    }
    enableConditions();
    Command1_Click();
}

void Form27::enableConditions() {
    const bool on = !ui_->Check1->isChecked();
    first_->setEnabled(on);
    last_->setEnabled(on);
    for (QWidget* box :
         std::initializer_list<QWidget*>{ui_->Combo7, ui_->Combo8, ui_->Combo9, ui_->Text1,
                                         ui_->Text2, ui_->Text4, ui_->Text5, ui_->Text7}) {
        box->setEnabled(on);
    }
}

ArticleQuery Form27::query() const {
    ArticleQuery query;
    query.all = ui_->Check1->isChecked();
    query.first = first_->texts();
    query.last = last_->texts();
    query.author = ui_->Combo9->currentText();
    query.category = ui_->Combo7->currentText();
    query.subcategory = ui_->Combo8->currentText();
    query.titleWord = ui_->Text7->text();
    query.contentWords = {ui_->Text2->text(), ui_->Text4->text(), ui_->Text5->text()};
    query.limit = ui_->Text1->text();
    return query;
}

void Form27::Check1_Click() {
    enableConditions();
    Command1_Click();
}

void Form27::Combo7_Click() {
    ui_->Combo8->refill(subcategoriesOf(environment_.stores, ui_->Combo7->currentText()));
}

void Form27::Command1_Click() {
    showCounts(browser_.list(query()));
}

void Form27::showChange() {
    showCounts(browser_.listAgain());
}

void Form27::showCounts(const ArticleCounts& counts) {
    QString words = u"共找到 "_s + QString::number(counts.found) + u" 篇"_s;
    if (counts.listed < counts.found) {
        words += u"，只列出最新的 "_s + QString::number(counts.listed) + u" 篇"_s;
    }
    ui_->found->setText(words);
}

// The current article is kept on purpose: after a press on a row its article opens.
void Form27::Command2_Click() {
    environment_.globals.wenzhangdalei = ui_->Combo7->currentText();
    environment_.globals.wenzhangxiaolei = ui_->Combo8->currentText();
    windows_.openAnother<Form26>();
}

void Form27::Command3_Click() {
    if (browser_.takeChosenRow()) {
        windows_.openAnother<Form26>();
    }
}

void Form27::打开文章_Click() {
    if (browser_.takeCurrentRow()) {
        windows_.openAnother<Form26>();
    }
}

void Form27::MSHFlexGrid1_RowChosen(int row) {
    picker_->hideList();
    browser_.press(row);
}

void Form27::删除本篇_Click() {
    remove(&ArticleBrowser::removeCurrent);
}

void Form27::删除本表_Click() {
    remove(&ArticleBrowser::removeListed);
}

void Form27::remove(QCoro::Task<bool> (ArticleBrowser::*removal)(std::stop_token)) {
    runs_.start([this, removal](std::stop_token stop) -> QCoro::Task<> {
        // Once more they would meet the same list.
        const auto enable = [this](bool on) {
            ui_->删除本篇->setEnabled(on);
            ui_->删除本表->setEnabled(on);
        };
        enable(false);
        const auto end = qScopeGuard([this, enable] {
            enable(true);
            undoLine_->showLast();
        });
        const bool removed = co_await (browser_.*removal)(stop);
        if (removed) {
            Form_Load();
        }
    });
}

}  // namespace guanchao
