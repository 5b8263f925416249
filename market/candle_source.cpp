#include "market/candle_source.h"

#include "base/activity.h"
#include "base/values.h"
#include "services/day_bars.h"
#include "services/factors.h"
#include "services/quote_reply.h"
#include "services/quote_source.h"
#include "services/service_names.h"
#include "services/stock_code.h"
#include "services/trading_day.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int years = 10;

// A day without prices, on which the stock was not traded, is none of a chart.
QList<Candle> candles(const QList<DayBar>& bars, const FactorList& factors) {
    QList<Candle> days;
    for (const DayBar& bar : bars) {
        if (bar.low > 0 && bar.close > 0) {
            days << Candle{bar.day,   bar.open,   bar.high,     bar.low,
                           bar.close, bar.volume, bar.turnover, factors.on(bar.day)};
        }
    }
    return days;
}

// The quote of a day behind the last one; nothing where there is none, or no trade yet.
std::optional<Candle> candleOf(const QuoteRow& row, const Candle& last) {
    const auto figure = [&row](qsizetype position) { return row.figure(position).value_or(0); };
    const QDate day = row.lastIndex() < field::day ? QDate() : dayFrom(row.text(field::day));
    const double formerClose = row.lastIndex() < field::day ? 0 : figure(field::formerClose);
    if (!day.isValid() || day <= last.day || figure(field::low) <= 0 || formerClose <= 0) {
        return std::nullopt;
    }
    // A former close that differs from the last close is one after a dividend.
    return Candle{day,
                  figure(field::open),
                  figure(field::high),
                  figure(field::low),
                  figure(field::latest),
                  figure(field::volume),
                  figure(field::amount),
                  last.factor * last.close / formerClose};
}

}  // namespace

QCoro::Task<CandleReply> CandleSource::fetch(QString dm, QDate around, std::stop_token stop) const {
    CandleReply reply = co_await daysThatAreOver(dm, around, stop);
    const bool reachesNow = !reply.days.isEmpty() &&
                            reply.days.last().day >= lastWeekdayOver(clock_.now()) &&
                            reply.days.last().day < clock_.now().date();
    if (reachesNow) {
        const Candle last = reply.days.last();
        const std::optional<Candle> today = co_await dayThatGoesOn(dm, last, stop);
        if (today) {
            reply.days << *today;
        }
    }
    co_return reply;
}

QCoro::Task<CandleReply> CandleSource::daysThatAreOver(QString dm, QDate around,
                                                       std::stop_token stop) const {
    CandleReply stored = co_await fromStore(dm, stop);
    // Behind a holiday the services are asked for days that there are not.
    const QDate wanted = around.isValid() ? around : lastWeekdayOver(clock_.now());
    if (!stored.days.isEmpty() && stored.days.last().day >= wanted) {
        co_return stored;
    }
    CandleReply fetched = co_await fromServices(dm, stop);
    if (!fetched.days.isEmpty() || stored.days.isEmpty()) {
        co_return fetched;
    }
    stored.lack = u"只到 %1：%2"_s.arg(dateText(stored.days.last().day), fetched.lack);
    co_return stored;
}

// One that can't be read is as good as none: the services know the days too.
QCoro::Task<CandleReply> CandleSource::fromStore(QString dm, std::stop_token stop) const {
    CandleReply reply;
    reply.from = u"本机的历史行情"_s;
    try {
        reply.days = co_await stored_.of(dm, stop);
    } catch (const OperationError&) {
        reply.days.clear();
    }
    co_return reply;
}

QCoro::Task<std::optional<Candle>> CandleSource::dayThatGoesOn(QString dm, Candle last,
                                                               std::stop_token stop) const {
    QuoteSource quotes(http_, clock_, services_);
    const QuotesReply told = co_await quotes.fetch(withCompanion(dm.toLower() + u','), stop);
    std::optional<Candle> today;
    for (const QuoteRow& row : quoteRows(told.lines)) {
        if (row.dm() == dm) {
            today = candleOf(row, last);
        }
    }
    co_return today;
}

QCoro::Task<CandleReply> CandleSource::fromServices(QString dm, std::stop_token stop) const {
    const QDate today = clock_.now().date();
    const DayBars bars(http_, clock_, services_.history);
    const BarsReply told = co_await bars.fetch(dm, today.addYears(-years), today, stop);
    CandleReply reply;
    if (!told.days) {
        const QStringList words = {told.lacks.join(u'；'),
                                   adviceOn(told.lacks, u"过一会儿再按“重读”"_s)};
        reply.lack = words.join(u'\n').trimmed();
        co_return reply;
    }
    FactorList factors;
    if (told.kind == pricesWithFactors && isStockCode(dm)) {
        const Factors service(http_, services_.factors);
        const std::optional<FactorList> found = co_await service.fetch(dm, stop);
        factors = found.value_or(FactorList());
        reply.lack = found ? QString() : u"复权因子没有取到，各日都没有复权"_s;
    } else if (isStockCode(dm)) {
        reply.lack = u"这个来源没有复权因子，各日都没有复权"_s;
    }
    reply.days = candles(*told.days, factors);
    reply.from = u"历史行情服务 "_s + kindName(told.kind);
    if (reply.days.isEmpty()) {
        reply.lack = u"历史行情服务没有这只股票的日线"_s;
    }
    co_return reply;
}

}  // namespace guanchao
