#include "research/form24.h"

#include <QScopeGuard>

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
    ui_->MSHFlexGrid1->setSortable({u"日期"_s});
    ui_->tableAndPlot->setSizes({1000, 1000});
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
    ThemeHistory history = newHistory();
    const std::optional<ThemeHistoryResult> result =
        co_await history.compare(first, last, theme, stop);
    if (result) {
        ui_->Label3->setText(result->line);
        ui_->missed->setText(result->missed);
        ui_->missed->setVisible(!result->missed.isEmpty());
        ui_->plot->showPoints(result->points, result->hasTheme);
    }
}

void Form24::showRun(bool running) {
    ui_->Command9->setEnabled(!running);
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
