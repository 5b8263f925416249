#include "app/market_band.h"

#include <QApplication>
#include <chrono>

#include "base/time_left.h"
#include "base/values.h"
#include "base/worker.h"
#include "frame/sheets.h"
#include "grid/amounts.h"
#include "grid/colours.h"
#include "market/market_summary.h"
#include "research/history_desk.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::seconds betweenAges(20);

struct MarketNow {
    MarketSummary summary;
    QString quotesTime;
};

MarketNow readMarket(const StoreFile& mainStore) {
    Connection store = mainStore.open();
    MarketNow now{readMarketSummary(store), {}};
    const Recordset times(store, u"select datetime(hqtime) from tempcanshu"_s);
    if (!times.atEnd()) {
        now.quotesTime = times.value(0).toText();
    }
    return now;
}

QString coloured(const QString& words, double sign) {
    const Colour colour = sign > 0 ? riseColour : sign < 0 ? fallColour : textColour;
    const QColor shown =
        readableColour(QColor::fromRgb(colour), QApplication::palette().color(QPalette::Window));
    return u"<span style=\"color:%1\">%2</span>"_s.arg(shown.name(), words);
}

QString indexWords(const IndexQuote& index) {
    const QString sign = index.gain > 0 ? u"+"_s : QString();
    return index.name.toHtmlEscaped() + u"&nbsp;"_s +
           coloured(QString::number(index.latest, 'f', 2) + u"&nbsp;"_s + sign +
                        QString::number(index.gain, 'f', 2) + u'%',
                    index.gain);
}

QString marketWords(const MarketSummary& market) {
    QStringList parts;
    for (const IndexQuote& index : market.indexes) {
        parts << indexWords(index);
    }
    parts << u"涨&nbsp;"_s + coloured(QString::number(market.rising), 1) +
                 u"&nbsp;&nbsp;平&nbsp;"_s + QString::number(market.level) +
                 u"&nbsp;&nbsp;跌&nbsp;"_s + coloured(QString::number(market.falling), -1);
    parts << u"涨停&nbsp;"_s + coloured(QString::number(market.atLimitUp), 1) +
                 u"&nbsp;&nbsp;跌停&nbsp;"_s + coloured(QString::number(market.atLimitDown), -1);
    parts << u"成交&nbsp;"_s + amountWords(market.turnover);
    return parts.join(u"&nbsp;&nbsp;&nbsp; "_s);
}

}  // namespace

MarketBand::MarketBand(Labels labels, Environment& environment, const AlarmDesk& desk)
    : labels_(labels), environment_(environment), minutes_(this), runs_(environment.failures) {
    minutes_.setObjectName(u"quotesAge"_s);
    connect(&minutes_, &QTimer::timeout, this, &MarketBand::showAge);
    minutes_.start(betweenAges);
    connect(&desk, &AlarmDesk::stateChanged, this, &MarketBand::showMonitoring);
    connect(&environment_.historyDesk, &HistoryDesk::changed, this, &MarketBand::showFill);
    showMonitoring();
    showFill();
}

void MarketBand::refresh() {
    runs_.stop();
    runs_.start([this](std::stop_token stop) { return read(stop); });
}

// A store that can't be read is told by the refresh that was before this.
QCoro::Task<> MarketBand::read(std::stop_token stop) {
    const auto job = [store = environment_.stores.main](const auto&) { return readMarket(store); };
    try {
        const MarketNow now = co_await inWorker(job, stop);
        labels_.market.setText(marketWords(now.summary));
        quotesTime_ = QDateTime::fromString(now.quotesTime, u"yyyy-MM-dd HH:mm:ss"_s);
        showAge();
    } catch (const OperationError&) {
        labels_.market.clear();
    }
    showMonitoring();
}

void MarketBand::showAge() {
    const qint64 age = quotesTime_.secsTo(environment_.clock.now());
    labels_.age.setText(quotesTime_.isValid() && age >= 0 ? ageWords(age) : QString());
}

void MarketBand::showMonitoring() {
    labels_.monitoring.setText(environment_.globals.jiankongkaiqi > 0 ? u"监控：运行中"_s
                                                                      : u"监控：停止"_s);
}

void MarketBand::showFill() {
    const ShownFill& fill = environment_.historyDesk.shown();
    const RunProgress& progress = fill.progress;
    const int share = progress.total > 0 ? progress.done * 100 / progress.total : 0;
    labels_.fill.setText(fill.running ? u"补全历史行情 %1%"_s.arg(share) : QString());
}

}  // namespace guanchao
