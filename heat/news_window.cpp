#include "heat/news_window.h"

#include "frame/looks.h"
#include "ui_news_window.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

NewsWindow::NewsWindow(Environment& environment, const NewsSubject& subject, const Words& words)
    : stores_(environment.stores),
      words_(words),
      ui_(std::make_unique<Ui::NewsWindow>()),
      ranking_(environment.stores, environment.globals, environment.shell, subject, rankingGrid_,
               historyGrid_),
      collectorLaunch_(environment.stores, environment.globals, environment.dialogs,
                       environment.processes) {
    ui_->setupUi(this);
    showWords();
    connectControls();
    Form_Load();
}

NewsWindow::~NewsWindow() = default;

void NewsWindow::showWords() {
    setWindowTitle(words_.caption);
    ui_->Label7->setText(words_.item + u"："_s);
    ui_->Text1->setAccessibleName(words_.item);
    ui_->Text1->setToolTip(u"要查找的"_s + words_.item + u"，可以不完整"_s);
    ui_->Check2->setText(words_.showAll);
    ui_->Command9->setIcon(updateIcon());
    ui_->Command2->setIcon(searchIcon());
    showGrids(*ui_->MSHFlexGrid1,
              u"还没有采集到新闻数量\n\n点“采集”启动采集程序，之后点“显示排名”"_s,
              *ui_->MSHFlexGrid2);
    ui_->tables->setSizes({1000, 1000});
    ui_->historyAndPlot->setSizes({1150, 850});
}

void NewsWindow::connectControls() {
    connect(ui_->Check1, &QCheckBox::toggled, this, &NewsWindow::Check1_Click);
    connect(ui_->Text2, &QLineEdit::textChanged, this, &NewsWindow::Text2_Change);
    connect(ui_->Text3, &QLineEdit::textChanged, this,
            [this](const QString& typed) { writeNewsAttention(stores_.heat, typed); });
    connect(ui_->Command1, &QPushButton::clicked, this, &NewsWindow::Command1_Click);
    connect(ui_->Command2, &QPushButton::clicked, this, &NewsWindow::Command2_Click);
    connect(ui_->Text1, &QLineEdit::returnPressed, this, &NewsWindow::Command2_Click);
    connect(ui_->Command9, &QPushButton::clicked, this, &NewsWindow::Command9_Click);
    connect(ui_->MSHFlexGrid1, &GridView::gridPressed, this,
            [this](int row, int, Qt::MouseButton button) { MSHFlexGrid1_MouseDown(row, button); });
    connect(ui_->MSHFlexGrid1, &GridView::gridDoubleClicked, this,
            &NewsWindow::MSHFlexGrid1_DblClick);
}

void NewsWindow::Form_Load() {
    if (const auto stored = readNewsSettings(stores_.heat)) {
        yinqingurl_ = stored->searchTemplate;
        showSettings(*stored);
    }
    ui_->Text1->setText(ranking_.current());
    Command9_Click();
}

// With the days shown first, the check writes back what is stored, in one go.
void NewsWindow::showSettings(const NewsSettings& stored) {
    ui_->Text2->setText(stored.days);
    const QSignalBlocker quiet = quietIfHeld(ui_->Check1, stores_.heat);
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
    writeCustomDays(stores_.heat, ui_->Check1->isChecked(), days);
}

void NewsWindow::Text2_Change() {
    const int days = checkedDays();
    if (ui_->Check1->isChecked()) {
        writeCustomDays(stores_.heat, true, days);
    }
}

void NewsWindow::Command1_Click() {
    collectorLaunch_.launch(words_.argumentWord);
}

void NewsWindow::Command2_Click() {
    find(ui_->Text1->text());
}

void NewsWindow::Command9_Click() {
    ranking_.showRanking(ui_->Check2->isChecked());
}

void NewsWindow::MSHFlexGrid1_MouseDown(int row, Qt::MouseButton button) {
    if (!ranking_.choose(row)) {
        return;
    }
    ui_->Text1->setText(ranking_.current());
    ui_->plot->showDays({});
    if (button == Qt::RightButton) {
        biaoji(rankingGrid_, row);
    }
    ui_->plot->showDays(ranking_.showHistory());
}

void NewsWindow::MSHFlexGrid1_DblClick() {
    ranking_.openSearchPage(yinqingurl_);
}

}  // namespace guanchao
