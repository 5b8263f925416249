#include "market/candle_panel.h"

#include <QHBoxLayout>
#include <QScopeGuard>
#include <QVBoxLayout>
#include <limits>

#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString adjustmentKey = u"复权"_s;
const QString rangeKey = u"范围"_s;
const QString noStock = u"没有选股票\n\n输入代码，或在列表里选一行按 F6"_s;

}  // namespace

CandlePanel::CandlePanel(QWidget* parent)
    : QWidget(parent),
      chart_(new CandleChart(this)),
      adjustments_(new QComboBox(this)),
      ranges_(new QComboBox(this)),
      again_(new QPushButton(this)),
      state_(new QLabel(this)) {
    buildControls();
    buildLayout();
    showReading(false);
    chart_->setHint(noStock);
}

void CandlePanel::buildControls() {
    chart_->setObjectName(u"candleChart"_s);
    chart_->setToolTip(u"滚轮缩放，按住左键拖动；方向键移动十字线，Home、End 到头尾，+、- 缩放"_s);
    adjustments_->setObjectName(u"adjustments"_s);
    adjustments_->setAccessibleName(u"复权"_s);
    adjustments_->setToolTip(u"除权除息以后，把以前的价格折成可比的"_s);
    const std::pair<QString, Adjustment> adjustments[] = {{u"前复权"_s, Adjustment::forward},
                                                          {u"后复权"_s, Adjustment::backward},
                                                          {u"不复权"_s, Adjustment::none}};
    for (const auto& [words, adjustment] : adjustments) {
        adjustments_->addItem(words, static_cast<int>(adjustment));
    }
    ranges_->setObjectName(u"ranges"_s);
    ranges_->setAccessibleName(u"范围"_s);
    ranges_->setToolTip(u"图上显示最近多少天"_s);
    const std::pair<QString, int> ranges[] = {{u"近三月"_s, 60},
                                              {u"近半年"_s, 120},
                                              {u"近一年"_s, 250},
                                              {u"近三年"_s, 750},
                                              {u"全部"_s, -1}};
    for (const auto& [words, days] : ranges) {
        ranges_->addItem(words, days);
    }
    ranges_->setCurrentIndex(1);
    again_->setObjectName(u"readAgain"_s);
    again_->setAutoDefault(false);
    state_->setObjectName(u"candleState"_s);
    state_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    state_->setWordWrap(true);
    connect(adjustments_, &QComboBox::currentIndexChanged, this, &CandlePanel::showAdjustment);
    connect(ranges_, &QComboBox::activated, this, &CandlePanel::showRange);
    connect(again_, &QPushButton::clicked, this, &CandlePanel::startOrStop);
}

void CandlePanel::buildLayout() {
    auto* row = new QHBoxLayout;
    row->addWidget(adjustments_);
    row->addWidget(ranges_);
    row->addWidget(again_);
    row->addWidget(state_, 1);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins({});
    all->addLayout(row);
    all->addWidget(chart_, 1);
}

void CandlePanel::serve(Environment& environment) {
    environment_ = &environment;
    runs_ = std::make_unique<Runs>(environment.failures);
}

void CandlePanel::showStock(const QString& dm, QDate around) {
    around_ = around;
    stop();
    if (dm != dm_) {
        chart_->showBars({});
        showState({});
    }
    dm_ = dm;
    toRead_ = !dm.isEmpty();
    chart_->setHint(dm.isEmpty() ? noStock : QString());
    again_->setEnabled(toRead_);
    readIfShown();
}

void CandlePanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    readIfShown();
}

void CandlePanel::readIfShown() {
    if (toRead_ && isVisible()) {
        toRead_ = false;
        runs_->start([this](std::stop_token stop) { return read(dm_, stop); });
    }
}

void CandlePanel::stop() {
    if (runs_) {
        runs_->stop();
    }
}

void CandlePanel::startOrStop() {
    if (isReading()) {
        stop();
    } else {
        showStock(QString(dm_), around_);
    }
}

QCoro::Task<> CandlePanel::read(QString dm, std::stop_token stop) {
    showReading(true);
    chart_->setHint(u"正在读取日线…"_s);
    const auto end = qScopeGuard([this] { showReading(false); });
    auto stopped = qScopeGuard([this] { chart_->setHint(u"已停止，按“重读”再读一遍"_s); });
    const CandleSource source(environment_->client, environment_->clock, environment_->services,
                              environment_->storedCandles);
    const CandleReply reply = co_await source.fetch(dm, around_, stop);
    stopped.dismiss();
    showReply(reply);
}

void CandlePanel::showReading(bool reading) {
    again_->setText(reading ? u"停止"_s : u"重读"_s);
    again_->setAccessibleName(reading ? u"停止读取日线"_s : u"重读日线"_s);
    again_->setToolTip(reading ? u"停止读取（Esc）"_s : u"再读一遍这只股票的日线"_s);
    again_->setEnabled(!dm_.isEmpty());
}

void CandlePanel::showReply(const CandleReply& reply) {
    chart_->showBars(reply.days);
    showRange();
    if (around_.isValid()) {
        chart_->showDay(around_);
    }
    if (reply.days.isEmpty()) {
        showState({});
        chart_->setHint(u"没有日线可画\n\n"_s + reply.lack);
        return;
    }
    const QString days = u"%1，%2 至 %3 共 %4 日"_s.arg(
        reply.from, dateText(reply.days.first().day), dateText(reply.days.last().day),
        QString::number(reply.days.size()));
    showState(reply.lack.isEmpty() ? days : days + u"；"_s + reply.lack);
}

void CandlePanel::showState(const QString& words) {
    state_->setText(shortened(words, longestShownName));
    state_->setToolTip(shortened(words, longestShownMessage));
}

void CandlePanel::showAdjustment() {
    chart_->setAdjustment(static_cast<Adjustment>(adjustments_->currentData().toInt()));
}

void CandlePanel::showRange() {
    const int days = ranges_->currentData().toInt();
    chart_->showLast(days < 0 ? std::numeric_limits<qsizetype>::max() : days);
}

QVariantMap CandlePanel::kept() const {
    return {{adjustmentKey, adjustments_->currentText()}, {rangeKey, ranges_->currentText()}};
}

void CandlePanel::showKept(const QVariantMap& kept) {
    for (const auto& [box, key] : {std::pair(adjustments_, adjustmentKey), {ranges_, rangeKey}}) {
        const int index = box->findText(kept.value(key).toString());
        if (index >= 0) {
            box->setCurrentIndex(index);
        }
    }
}

}  // namespace guanchao
