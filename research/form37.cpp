#include "research/form37.h"

#include <QTabBar>
#include <algorithm>

#include "base/activity.h"
#include "frame/run_share.h"
#include "market/stored_candles.h"
#include "research/history_shelf.h"
#include "research/laboratory/backtest_grids.h"
#include "ui_form37.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString usualRule = u"（常用的值）"_s;

}  // namespace

Form37::Form37(Environment& environment, Windows&)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      ui_(std::make_unique<Ui::Form37>()),
      rules_(environment.applicationFolder),
      run_([this](const ResearchProgress& it) { showRun(it); }),
      laboratory_(environment.stores, run_, environment.sharedHistory.shelf()),
      curveExport_(environment.dialogs, environment.failures),
      charts_(environment.failures),
      runs_(environment.failures) {
    ui_->setupUi(this);
    ui_->pages->tabBar()->setAccessibleName(ui_->pages->accessibleName());
    ui_->pages->tabBar()->setDrawBase(false);
    ui_->across->setUp(u"横向"_s, u"持有天数"_s, false);
    ui_->down->setUp(u"纵向"_s, {}, true);
    ui_->measure->addItems(sweepMeasures());
    ui_->plot->setHint(u"点“运行”，这里画出资金的曲线"_s);
    ui_->chart->setHint(u"选一次买卖，这里画出它的 K 线"_s);
    ui_->tradesAndChart->setSizes({1000, 1000});
    setUpGrids();
    connectControls();
    showRules({});
    ui_->fields->show(rules_.last());
    showRun({});
}

Form37::~Form37() = default;

void Form37::setUpGrids() {
    const std::tuple<GridView*, ResultGrid*, QString> grids[] = {
        {ui_->years, &years_, u"点“运行”，这里列出各年各月的涨幅"_s},
        {ui_->trades, &trades_, u"点“运行”，这里列出每一次买卖"_s},
        {ui_->returns, &returns_, u"信号选“业绩预约日”再点“运行”，这里列出每次公告以后的涨幅"_s},
        {ui_->comparison, &comparison_, u"点“比较”，存下的规则并排列在这里"_s},
        {ui_->heat, &heat_, u"选一项或两项，点“扫描”\n\n双击一格，它的值就填到左边"_s}};
    for (const auto& [view, grid, hint] : grids) {
        view->setGrid(*grid);
        view->setHint(hint);
        view->allowExport(environment_.dialogs, environment_.failures);
        view->setSortable({u"日期"_s});
    }
}

void Form37::connectControls() {
    const auto command = [this](QPushButton* button, const Runs::Job& job) {
        connect(button, &QPushButton::clicked, this, [this, job] { runs_.start(job); });
    };
    command(ui_->run, [this](std::stop_token stop) { return test(stop); });
    command(ui_->compare, [this](std::stop_token stop) { return compare(stop); });
    command(ui_->sweep, [this](std::stop_token stop) { return sweep(stop); });
    command(ui_->keep, [this](std::stop_token stop) { return keepRule(stop); });
    command(ui_->remove, [this](std::stop_token stop) { return removeRule(stop); });
    connect(ui_->stop, &QPushButton::clicked, this, [this] { run_.stop(); });
    connect(ui_->exportCurve, &QPushButton::clicked, this, [this] {
        curveExport_.start(curve_, u"回测曲线"_s, [] { return QList<int>{1, 2, 3, 4}; });
    });
    connect(ui_->rules, &QComboBox::currentIndexChanged, this, &Form37::showRule);
    connect(ui_->measure, &QComboBox::currentIndexChanged, this, &Form37::showSweptValues);
    connect(ui_->heat, &GridView::rowDoubleClicked, this, &Form37::takeSwept);
    connect(ui_->heat, &GridView::enterPressed, this, &Form37::takeSwept);
    connect(ui_->trades, &GridView::rowChosen, this, &Form37::chooseTrade);
}

void Form37::showRules(const QString& chosen) {
    {
        const QSignalBlocker blocker(ui_->rules);
        ui_->rules->clear();
        ui_->rules->addItem(usualRule);
        ui_->rules->addItems(rules_.names());
        ui_->rules->setCurrentIndex(std::max(0, ui_->rules->findText(chosen)));
    }
    showRule();
}

void Form37::showRule() {
    const QString name = chosenRule();
    ui_->fields->show(name.isEmpty() ? BacktestRule() : rules_.rule(name));
    ui_->remove->setEnabled(!name.isEmpty());
}

QString Form37::chosenRule() const {
    return ui_->rules->currentIndex() > 0 ? ui_->rules->currentText() : QString();
}

void Form37::showReportDates() {
    BacktestRule rule;
    rule.source = 1;
    rule.positions = 20;
    ui_->rules->setCurrentIndex(0);
    ui_->fields->show(rule);
}

QCoro::Task<> Form37::keepRule(std::stop_token stop) {
    const BacktestRule rule = ui_->fields->rule();
    QString name =
        co_await environment_.dialogs.input(stop, u"规则的名称："_s, u"另存为规则"_s, chosenRule());
    name = name.simplified();
    if (name.isEmpty()) {
        co_return;
    }
    if (rules_.names().contains(name, Qt::CaseInsensitive)) {
        const QString question = u"已有规则“%1”，换成现在的各项吗？"_s.arg(name);
        const bool replaces = co_await environment_.dialogs.ask(stop, question);
        if (!replaces) {
            co_return;
        }
    }
    rules_.keep(name, rule);
    showRules(name);
}

QCoro::Task<> Form37::removeRule(std::stop_token stop) {
    const QString name = chosenRule();
    const QString question = u"删除规则“%1”吗？"_s.arg(name);
    const bool removes = co_await environment_.dialogs.ask(stop, question);
    if (removes) {
        rules_.remove(name);
        showRules({});
    }
}

// It is there again when the window opens the next time.
BacktestRule Form37::ruleToRun() {
    const BacktestRule rule = ui_->fields->rule();
    const QString contradiction = contradictionIn(rule);
    if (!contradiction.isEmpty()) {
        const Activity activity(u"回测"_s);
        throw OperationError(contradiction);
    }
    environment_.failures.guard([&] { rules_.keepLast(rule); });
    return rule;
}

QCoro::Task<> Form37::test(std::stop_token stop) {
    const BacktestRule rule = ruleToRun();
    const std::optional<BacktestResult> result = co_await laboratory_.test(rule, stop);
    if (result) {
        showResult(*result);
    }
}

void Form37::showResult(const BacktestResult& result) {
    const QString none = u"这条规则没有买过"_s;
    ui_->sum->setText(sumWords(result));
    ui_->plot->setHint(u"没有历史行情\n\n先在“工具 / 历史行情”里补全"_s);
    ui_->plot->show(result.days);
    ui_->trades->setHint(none);
    showYears(years_, yearsOf(result.days));
    showTrades(trades_, result.trades);
    showReturns(returns_, result.returns);
    ui_->returnsSum->setText(result.returns.isEmpty() ? QString() : returnsWords(result.returns));
    done_ = result.trades;
    ui_->chart->showBars({});
    showCurve(curve_, result.days);
    showRun({});
}

QCoro::Task<> Form37::compare(std::stop_token stop) {
    const QStringList kept = rules_.names();
    QStringList names = {u"左边的各项"_s};
    QList<BacktestRule> rules = {ruleToRun()};
    for (const QString& name : kept) {
        names << name;
        rules << rules_.rule(name);
    }
    const std::optional<QList<BacktestResult>> results = co_await laboratory_.compare(rules, stop);
    if (results) {
        showComparison(comparison_, names, *results);
    }
}

QCoro::Task<> Form37::sweep(std::stop_token stop) {
    const BacktestRule rule = ruleToRun();
    const SweepAxis across = ui_->across->axis().value();
    const std::optional<SweepAxis> down = ui_->down->axis();
    swept_.reset();
    heat_.clear();
    ui_->heat->setHint(u"没有扫描完，再点“扫描”"_s);
    std::optional<SweepResult> swept = co_await laboratory_.sweep(rule, across, down, stop);
    if (swept) {
        swept_ = std::move(swept);
        showSweptValues();
    }
}

// The values of a cell become those of the rule.
void Form37::takeSwept(int row) {
    const int col = ui_->heat->currentIndex().column();
    if (!swept_ || !heat_.isDataRow(row) || col < 2) {
        return;
    }
    BacktestRule rule = ui_->fields->rule();
    rule.*swept_->across->value = swept_->acrossValues[col - 2];
    if (swept_->down) {
        // A sort may have moved the row: its first cell tells the value.
        rule.*swept_->down->value =
            *std::ranges::find(swept_->downValues, heat_.textMatrix(row, 1),
                               [this](double value) { return valueText(*swept_->down, value); });
    }
    ui_->fields->show(rule);
}

void Form37::showSweptValues() {
    if (swept_) {
        showSweep(heat_, *swept_, static_cast<SweepMeasure>(ui_->measure->currentIndex()));
    }
}

// Other windows take the stock over.
void Form37::chooseTrade(int row) {
    if (!trades_.isDataRow(row)) {
        return;
    }
    const QString dm = trades_.textMatrix(row, 1);
    environment_.globals.dangqiandm = dm;
    environment_.globals.dangqianjc = trades_.textMatrix(row, 2);
    const QDate bought = QDate::fromString(trades_.textMatrix(row, tradeBuyDayColumn), Qt::ISODate);
    charts_.stop();
    charts_.start([this, dm, bought](std::stop_token stop) { return showChart(dm, bought, stop); });
}

// With all trades of the stock.
QCoro::Task<> Form37::showChart(QString dm, QDate day, std::stop_token stop) {
    const QList<Candle> bars = co_await environment_.storedCandles.of(dm, stop);
    ui_->chart->showBars(bars);
    for (const Trade& trade : done_) {
        if (trade.dm == dm) {
            ui_->chart->mark(dateOf(trade.buyDay), TradeMark::buy);
        }
        if (trade.dm == dm && trade.reason) {
            ui_->chart->mark(dateOf(trade.sellDay), TradeMark::sell);
        }
    }
    ui_->chart->showDay(day);
}

void Form37::showRun(const ResearchProgress& progress) {
    for (QPushButton* button : {ui_->run, ui_->compare, ui_->sweep}) {
        button->setEnabled(!progress.running);
    }
    ui_->exportCurve->setEnabled(curve_.rows() > 1);
    ui_->stop->setEnabled(progress.running && !progress.stopping);
    ui_->stop->setText(progress.stopping && progress.running ? u"正在停止…"_s : u"停止(&S)"_s);
    ui_->progress->setVisible(progress.running);
    showShare(*ui_->progress, progress.done, progress.total, progress.timeLeft);
    ui_->step->setText(progress.running ? progress.step : QString());
    ui_->step->setVisible(!ui_->step->text().isEmpty());
}

void Form37::reject() {
    if (run_.running()) {
        run_.stop();
    } else {
        close();
    }
}

}  // namespace guanchao
