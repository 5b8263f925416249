#include "heat/news_window.h"

#include "base/values.h"
#include "frame/open_windows.h"
#include "heat/headlines_window.h"
#include "ui_news_window.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

NewsWindow::NewsWindow(Environment& environment, const HeatSubject& subject, const Words& words)
    : HeatWindow(environment, subject),
      heat_(environment.stores.heat),
      ui_(std::make_unique<Ui::NewsWindow>()) {
    ui_->setupUi(this);
    showWords(words);
    connectControls();
    connectMenu();
    Form_Load();
}

NewsWindow::~NewsWindow() = default;

void NewsWindow::showWords(const Words& words) {
    setWindowTitle(words.caption);
    ui_->Label7->setText(words.item + u"："_s);
    ui_->Text1->setAccessibleName(words.item);
    ui_->Text1->setToolTip(u"要查找的"_s + words.item + u"，可以不完整"_s);
    ui_->Check2->setText(words.showAll);
    take({ui_->Text1, ui_->Check2, ui_->Command1, ui_->Command2, ui_->Command9, ui_->heatMap,
          ui_->打开热度图, ui_->MSHFlexGrid1, ui_->MSHFlexGrid2, ui_->plot},
         u"还没有采集到新闻数量\n\n点“采集”启动采集程序，采集到一项，这里就多一项"_s);
    ui_->tables->setSizes({1000, 1000});
    ui_->historyAndPlot->setSizes({1150, 850});
}

void NewsWindow::connectControls() {
    connect(ui_->Check1, &QCheckBox::toggled, this, &NewsWindow::Check1_Click);
    connect(ui_->Text2, &QLineEdit::textChanged, this, &NewsWindow::Text2_Change);
    connect(ui_->Text3, &QLineEdit::textChanged, this,
            [this](const QString& typed) { writeNewsAttention(heat_, typed); });
}

void NewsWindow::connectMenu() {
    kuaijiemenu_.setObjectName(u"kuaijiemenu"_s);
    kuaijiemenu_.addActions({ui_->打开采集网页, ui_->查看新闻标题, ui_->打开热度图});
    historyMenu_.addAction(ui_->查看这天标题);
    connect(ui_->打开采集网页, &QAction::triggered, this, [this] { openSearchPage(); });
    offerHeadlines(*ui_->查看新闻标题, *ui_->MSHFlexGrid1, rankingGrid_);
    offerHeadlines(*ui_->查看这天标题, *ui_->MSHFlexGrid2, historyGrid_);
    ui_->MSHFlexGrid1->setRowMenu(kuaijiemenu_);
    ui_->MSHFlexGrid2->setRowMenu(historyMenu_);
}

// In the menu of its table, and by its key there.
void NewsWindow::offerHeadlines(QAction& action, GridView& view, const ResultGrid& grid) {
    offerByKey(action, view);
    connect(&action, &QAction::triggered, this, [this, &grid] { openHeadlines(grid); });
}

void NewsWindow::Form_Load() {
    if (const auto stored = readNewsSettings(heat_)) {
        yinqingurl_ = stored->searchTemplate;
        showSettings(*stored);
    }
    ui_->Text1->setText(ranking_.current());
    Command9_Click();
}

// With the days shown first, the check writes back what is stored, in one go.
void NewsWindow::showSettings(const NewsSettings& stored) {
    ui_->Text2->setText(stored.days);
    const QSignalBlocker quiet = quietIfHeld(ui_->Check1);
    ui_->Check1->setChecked(stored.customOn);
}

// Refused days give way to the default in the box, which changes the text once more.
int NewsWindow::checkedDays() {
    const std::optional<int> days = customDays(ui_->Text2->text());
    if (!days) {
        ui_->Text2->setText(QString::number(defaultCustomDays));
    }
    return days.value_or(defaultCustomDays);
}

void NewsWindow::Check1_Click() {
    const int days = checkedDays();
    writeCustomDays(heat_, ui_->Check1->isChecked(), days);
}

void NewsWindow::Text2_Change() {
    const int days = checkedDays();
    if (ui_->Check1->isChecked()) {
        writeCustomDays(heat_, true, days);
    }
}

// Of the row that is marked.
void NewsWindow::openHeadlines(const ResultGrid& grid) {
    const int row = grid.markedRow();
    const bool isOfItem = grid.isDataRow(row);
    const QString item = isOfItem ? grid.textMatrix(row, heatItemColumn) : ranking_.current();
    const QString day = isOfItem ? grid.textMatrix(row, heatDayColumn) : QString();
    auto window =
        std::make_unique<HeadlinesWindow>(environment_, ranking_.wordsOf(trimBlanks(item)), day);
    environment_.openWindows.close<HeadlinesWindow>();
    environment_.openWindows.adopt(window.release());
}

}  // namespace guanchao
