#include "research/form24.h"

#include <QFile>
#include <QScopeGuard>
#include <QTabBar>

#include "frame/told_role.h"
#include "research/rank_tables.h"
#include "ui_form24.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

Form24::Form24(Environment& environment, Windows&)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      ui_(std::make_unique<Ui::Form24>()),
      runs_(environment.failures) {
    ui_->setupUi(this);
    ui_->MSHFlexGrid1->setGrid(grid_);
    ui_->MSHFlexGrid1->allowExport(environment_.dialogs, environment_.failures);
    ui_->MSHFlexGrid1->setHint(u"选日期和主题，点“开始对比”\n\n没有历史行情的日子不列出"_s);
    ui_->plot->setHint(u"点“开始对比”，这里画出逐日的对比"_s);
    ui_->lines->setPlot(*ui_->plot);
    ui_->lines->showLines();
    ui_->MSHFlexGrid1->setSortable({u"日期"_s});
    ui_->tableAndPlot->setSizes({1000, 1000});
    ui_->plotAndLines->setStretchFactor(0, 1);
    ui_->plotAndLines->setSizes({1000, 170});
    connectTables();
    tellRole(*ui_->Label3, QAccessible::StaticText);
    first_ = new DateBoxes(*ui_->Combo5, *ui_->Combo6, *ui_->Combo7, this);
    last_ = new DateBoxes(*ui_->Combo8, *ui_->Combo9, *ui_->Combo10, this);
    connect(ui_->Command9, &QPushButton::clicked, this,
            [this] { runs_.start([this](std::stop_token stop) { return compare(stop); }); });
    connect(ui_->stop, &QPushButton::clicked, this, [this] { runs_.stop(); });
    ui_->Text1->setText(environment.globals.dangqianzhuti);
    const ThemeHistory history = newHistory();
    first_->setTexts(history.firstDay());
    last_->setTexts(history.lastDay());
    ui_->missed->hide();
    showRun(false);
}

Form24::~Form24() = default;

// With the services as they are now.
ThemeHistory Form24::newHistory() {
    return {environment_.stores,
            environment_.globals,
            environment_.clock,
            environment_.dialogs,
            {DayBars(environment_.client, environment_.clock, environment_.services.history),
             Factors(environment_.client, environment_.services.factors)},
            environment_.askedHistory,
            grid_,
            [this](const ThemeHistoryStep& step) { showStep(step); }};
}

QCoro::Task<> Form24::compare(std::stop_token stop) {
    showRun(true);
    const auto end = qScopeGuard([this] { showRun(false); });
    const DateTexts first = first_->texts();
    const DateTexts last = last_->texts();
    const QString theme = ui_->Text1->text();
    ui_->tabs->setCurrentWidget(ui_->comparisonPage);
    ThemeHistory history = newHistory();
    const std::optional<ThemeHistoryResult> result =
        co_await history.compare(first, last, theme, stop);
    isRanked_ = false;  // the run may have brought prices
    if (result) {
        showResult(*result);
    }
}

QCoro::Task<> Form24::showStored(QString theme, std::stop_token stop) {
    showRun(true);
    const auto end = qScopeGuard([this] { showRun(false); });
    ui_->Label4->hide();
    const DateTexts first = first_->texts();
    const DateTexts last = last_->texts();
    ThemeHistory history = newHistory();
    const std::optional<ThemeHistoryResult> result =
        co_await history.compareStored(first, last, theme, stop);
    if (result) {
        ui_->Text1->setText(theme);
        showResult(*result);
        tellOtherSource();
        ui_->tabs->setCurrentWidget(ui_->comparisonPage);
    }
}

void Form24::showResult(const ThemeHistoryResult& result) {
    ui_->Label3->setText(result.line);
    ui_->missed->setText(result.missed);
    ui_->missed->setVisible(!result.missed.isEmpty());
    ui_->plot->showHistory(result);
    ui_->lines->showLines();
}

// The ranks may rest on other prices than the comparison.
void Form24::tellOtherSource() {
    if (ui_->source->currentIndex() == 1) {
        const QString words =
            u"这里按对比时下载过的行情算，排名按历史行情库，两边的数字可以不同。"_s;
        ui_->missed->setText(QStringList{words, ui_->missed->text()}.join(u'\n').trimmed());
        ui_->missed->show();
    }
}

void Form24::connectTables() {
    const auto connectTable = [this](GridView& view, ResultGrid& grid, int themeColumn) {
        view.setGrid(grid);
        view.allowExport(environment_.dialogs, environment_.failures);
        view.setHint(u"点“全部主题”，按库里已有的行情给全部主题排名"_s);
        view.setSortable();
        const auto open = [this, &grid, themeColumn](int row) {
            openTheme(grid, row, themeColumn);
        };
        connect(&view, &GridView::rowDoubleClicked, this, open);
        connect(&view, &GridView::enterPressed, this, open);
    };
    connectTable(*ui_->ranks, ranks_, rankThemeColumn);
    connectTable(*ui_->weeks, weeks_, weekThemeColumn);
    ui_->tabs->tabBar()->setAccessibleName(ui_->tabs->accessibleName());
    connect(ui_->rankAll, &QPushButton::clicked, this, [this] { startRanking(); });
    const auto rankAnew = [this] {
        if (ui_->tabs->currentWidget() != ui_->comparisonPage && !isRanked_) {
            startRanking();
        }
    };
    connect(ui_->tabs, &QTabWidget::currentChanged, this, rankAnew);
    ui_->source->setCurrentIndex(hasHistory() ? 1 : 0);
    connect(ui_->source, &QComboBox::currentIndexChanged, this, [this, rankAnew] {
        isRanked_ = false;
        rankAnew();
    });
}

bool Form24::hasHistory() const {
    return QFile::exists(environment_.stores.firstHistory.path);
}

void Form24::openTheme(const ResultGrid& grid, int row, int col) {
    if (grid.isDataRow(row) && !runs_.running()) {
        const QString theme = grid.textMatrix(row, col);
        runs_.start([this, theme](std::stop_token stop) { return showStored(theme, stop); });
    }
}

void Form24::startRanking() {
    if (!runs_.running()) {
        runs_.start([this](std::stop_token stop) { return rank(stop); });
    }
}

QCoro::Task<> Form24::rank(std::stop_token stop) {
    showRun(true);
    const auto end = qScopeGuard([this] { showRun(false); });
    ui_->Label4->hide();
    showStep({u"全部主题"_s});
    ThemeHistory history = newHistory();
    const std::optional<HistoryRange> range =
        history.readRange(first_->texts(), last_->texts(), QString());
    if (!range) {
        co_return;
    }
    const RangeQuestion question = {
        ui_->source->currentIndex() == 0 ? RangeSource::downloaded : RangeSource::history,
        range->first, range->last};
    const RangeRanks ranks = co_await rankStored(environment_.stores, question, stop);
    isRanked_ = true;
    fillRanks(ranks, ranks_);
    fillWeeks(ranks, weeks_);
    ui_->ranksLine->setText(ranksLine(ranks, question));
    ui_->weeksLine->setText(u"每格是那一周的总涨幅，列头是周一；双击或回车看这个主题的对比。"_s);
    if (ui_->tabs->currentWidget() == ui_->comparisonPage) {
        ui_->tabs->setCurrentWidget(ui_->ranksPage);
    }
}

void Form24::showRun(bool running) {
    ui_->Command9->setEnabled(!running);
    ui_->rankAll->setEnabled(!running);
    ui_->source->setEnabled(!running && hasHistory());
    ui_->stop->setEnabled(running);
    ui_->Label4->setVisible(running);
    ui_->step->setVisible(running);
    ui_->progress->setVisible(running);
}

void Form24::showStep(const ThemeHistoryStep& step) {
    ui_->step->setText(step.text);
    ui_->progress->setMaximum(step.total);
    ui_->progress->setValue(step.done);
}

void Form24::reject() {
    if (runs_.running()) {
        runs_.stop();
    } else {
        close();
    }
}

}  // namespace guanchao
