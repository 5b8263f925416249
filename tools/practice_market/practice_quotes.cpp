#include "tools/practice_market/practice_quotes.h"

#include <algorithm>
#include <cmath>

#include "formats/seed_list.h"
#include "services/stock_code.h"
#include "services/trading_day.h"
#include "tools/practice_market/practice_events.h"

namespace guanchao {

namespace {

struct Index {
    QStringView code;
    QStringView name;
};
constexpr Index homeIndexes[] = {{u"sh000001", u"上证指数"},
                                 {u"sh000300", u"沪深300"},
                                 {u"sz399001", u"深证成指"},
                                 {u"sz399106", u"深证综指"}};
constexpr Index worldIndexes[] = {
    {u"int_dji", u"道琼斯"}, {u"int_nasdaq", u"纳斯达克"}, {u"r_HSI", u"恒生指数"}};

// How one kind of security is priced and written.
struct Kind {
    double step;          // smallest move, in yuan or points
    int decimals;         // of a price as the service writes it
    double lowest;        // level, in yuan or points
    double highest;       // level, in yuan or points
    double fewestShares;  // traded on a day
    double mostShares;    // traded on a day
    bool isIndex;         // no bids and asks, never suspended
    bool wholeNumbers;    // volume in lots, amount and the empty fields without decimals
};
constexpr Kind stock = {0.01, 3, 3.6, 250, 2e6, 2e8, false, false};
constexpr Kind shanghaiIndex = {0.0001, 4, 2000, 9000, 2e10, 6e10, true, true};
constexpr Kind shenzhenIndex = {0.001, 3, 2000, 9000, 2e10, 6e10, true, false};
constexpr Kind worldIndex = {0.01, 2, 10000, 45000, 0, 0, true, false};

const QDate firstExchangeDay(1990, 12, 19);

constexpr double yuanPerIndexShare = 12;
constexpr int bookLevels = 5;
constexpr int bookSeconds = 3;
constexpr int secondsPerMinute = 60;
constexpr int mostLotsPerLevel = 5000;
constexpr double suspendedPart = 1.0 / 150;
constexpr quint64 suspensionNumber = 3;

const QString spoiledReply = QStringLiteral("var hq_str_sys_auth=\"FAILED\";\n");
const QString shortPrefix = QStringLiteral("s_");

const Index* worldIndexOf(const QString& code) {
    const auto* found = std::ranges::find(worldIndexes, code, &Index::code);
    return found == std::end(worldIndexes) ? nullptr : found;
}

bool isShanghai(const QString& code) {
    return code.startsWith(QLatin1String("sh"));
}

const Kind& kindOf(const QString& code) {
    if (code.startsWith(QLatin1String("sh000"))) {
        return shanghaiIndex;
    }
    return code.startsWith(QLatin1String("sz399")) ? shenzhenIndex : stock;
}

bool isWellFormed(const QString& code) {
    if (worldIndexOf(code)) {
        return true;
    }
    const auto isLetter = [](QChar c) { return c.toLower() >= u'a' && c.toLower() <= u'z'; };
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    const QStringView plain =
        QStringView(code).mid(code.startsWith(shortPrefix) ? shortPrefix.size() : 0);
    return plain.size() == 8 && std::ranges::all_of(plain.first(2), isLetter) &&
           std::ranges::all_of(plain.last(6), isDigit);
}

struct Quote {
    DayPrices prices;
    qint64 shares = 0;
    double amount = 0;
};

Quote quoteOf(const Kind& kind, quint64 key, const TradingMoment& moment) {
    const DayPrices prices =
        dayPrices(key, kind.lowest / kind.step, kind.highest / kind.step, moment);
    const auto day = static_cast<quint64>(moment.day.toJulianDay());
    const double sharesOfDay = std::lerp(kind.fewestShares, kind.mostShares, evenNumber(key, day));
    const double passed = (1.0 + moment.elapsed) / (1.0 + tradingSeconds);
    const double shares = std::floor(sharesOfDay * passed);
    const double yuanPerShare =
        kind.isIndex ? yuanPerIndexShare : static_cast<double>(prices.open) * kind.step;
    return {prices, static_cast<qint64>(shares), shares * yuanPerShare};
}

Quote suspended(const Quote& quote) {
    return {{quote.prices.formerClose}};
}

QString decimal(double value, int decimals) {
    return QString::number(value, 'f', decimals);
}

QString priceText(const Kind& kind, qint64 steps) {
    return decimal(static_cast<double>(steps) * kind.step, kind.decimals);
}

// The last price, the change in yuan or points, the change in percent.
QStringList changeFields(const Kind& kind, const DayPrices& prices) {
    const qint64 change = prices.last > 0 ? prices.last - prices.formerClose : 0;
    const double percent =
        100.0 * static_cast<double>(change) / static_cast<double>(prices.formerClose);
    return {priceText(kind, prices.last), priceText(kind, change), decimal(percent, 2)};
}

QStringList shortFields(const Kind& kind, const Quote& quote) {
    return changeFields(kind, quote.prices) << QString::number(quote.shares / sharesPerLot)
                                            << decimal(std::floor(quote.amount / 10000), 0);
}

// Bid, ask, volume, amount, then five bids and five asks as (volume, price).
QStringList tradeFields(const Kind& kind, const Quote& quote, quint64 bookKey) {
    const qint64 last = quote.prices.last;
    const bool hasBook = !kind.isIndex && last > 0;
    const QString noPrice = kind.wholeNumbers ? QStringLiteral("0") : priceText(kind, 0);
    const auto bid = [&](int level) { return hasBook ? priceText(kind, last - level) : noPrice; };
    const auto ask = [&](int level) {
        return hasBook ? priceText(kind, last + 1 + level) : noPrice;
    };
    const auto volume = [&](int place) {
        const double number = evenNumber(bookKey, static_cast<quint64>(place));
        const int lots = hasBook ? 1 + static_cast<int>(mostLotsPerLevel * number) : 0;
        return QString::number(lots * sharesPerLot);
    };
    QStringList fields = {bid(0), ask(0)};
    fields << QString::number(kind.wholeNumbers ? quote.shares / sharesPerLot : quote.shares)
           << decimal(quote.amount, kind.wholeNumbers ? 0 : 3);
    for (int level = 0; level < bookLevels; ++level) {
        fields << volume(level) << bid(level);
    }
    for (int level = 0; level < bookLevels; ++level) {
        fields << volume(bookLevels + level) << ask(level);
    }
    return fields;
}

QStringList fullFields(const Kind& kind, const Quote& quote, quint64 key,
                       const TradingMoment& moment) {
    const DayPrices& prices = quote.prices;
    QStringList fields;
    for (const qint64 steps :
         {prices.open, prices.formerClose, prices.last, prices.high, prices.low}) {
        fields << priceText(kind, steps);
    }
    fields += tradeFields(kind, quote, key + static_cast<quint64>(moment.elapsed / bookSeconds));
    return fields << moment.day.toString(Qt::ISODate) << moment.clock().toString(Qt::ISODate)
                  << QStringLiteral("00");
}

// Prices before a dividend are scaled and rounded to the step.
PracticeDay dayOf(const Kind& kind, quint64 key, const QDate& day, double above) {
    const Quote quote = quoteOf(kind, key, {day, tradingSeconds});
    const auto price = [&](qint64 steps) {
        return std::round(static_cast<double>(steps) * above) * kind.step;
    };
    const DayPrices& prices = quote.prices;
    return {day,
            price(prices.formerClose),
            price(prices.open),
            price(prices.high),
            price(prices.low),
            price(prices.last),
            quote.shares / sharesPerLot * sharesPerLot,
            quote.amount};
}

}  // namespace

std::vector<PracticeStock> readPracticeStocks(const QString& path) {
    std::vector<PracticeStock> stocks;
    for (const QStringList& row : readSeedList(path, 2)) {
        stocks.push_back({row[0], row[1]});
    }
    return stocks;
}

PracticeQuotes::PracticeQuotes(std::vector<PracticeStock> stocks, Pace pace) : pace_(pace) {
    for (const Index& index : homeIndexes) {
        add(index.code.toString(), index.name.toString());
    }
    for (const PracticeStock& listed : stocks) {
        add(listed.code.toLower(), listed.name);
    }
}

void PracticeQuotes::suspend(const QString& code) {
    const auto found = securities_.find(code.toLower());
    if (found != securities_.end()) {
        found->suspended = true;
    }
}

bool PracticeQuotes::isSuspended(const QString& code) const {
    const auto found = securities_.constFind(code.toLower());
    return found != securities_.constEnd() && found->suspended;
}

QString PracticeQuotes::line(const QString& lowerCaseCode, const QDateTime& now) const {
    return reply({lowerCaseCode}, now);
}

QString PracticeQuotes::reply(const QStringList& lowerCaseCodes, const QDateTime& now) const {
    if (!std::ranges::all_of(lowerCaseCodes, isWellFormed)) {
        return spoiledReply;
    }
    QString lines;
    for (const QString& code : lowerCaseCodes) {
        lines += QStringLiteral("var hq_str_%1=\"%2\";\n").arg(code, values(code, now));
    }
    return lines;
}

void PracticeQuotes::add(const QString& lowerCaseCode, const QString& name) {
    const bool drawn = evenNumber(keyOf(lowerCaseCode), suspensionNumber) < suspendedPart;
    securities_.insert(lowerCaseCode, {name, drawn && !kindOf(lowerCaseCode).isIndex});
}

std::vector<PracticeDay> PracticeQuotes::days(const QString& lowerCaseCode, const QDate& first,
                                              const QDate& last, const QDateTime& now) const {
    std::vector<PracticeDay> days;
    if (!securities_.contains(lowerCaseCode)) {
        return days;
    }
    const QDate end = std::min(last, lastEndedDay(now));
    for (QDate day = std::max(first, firstExchangeDay); day <= end; day = day.addDays(1)) {
        if (isWeekday(day) && !isHalted(lowerCaseCode, day)) {
            days.push_back(dayOf(kindOf(lowerCaseCode), keyOf(lowerCaseCode), day,
                                 aboveWalk(lowerCaseCode, day)));
        }
    }
    return days;
}

int PracticeQuotes::priceDecimals(const QString& lowerCaseCode) const {
    return kindOf(lowerCaseCode).decimals;
}

QString PracticeQuotes::name(const QString& lowerCaseCode) const {
    const Index* world = worldIndexOf(lowerCaseCode);
    return world ? world->name.toString() : securities_.value(lowerCaseCode).name;
}

std::optional<PracticeMinutes> PracticeQuotes::minutes(const QString& lowerCaseCode,
                                                       const QDateTime& now) const {
    const bool isWorld = worldIndexOf(lowerCaseCode) != nullptr;
    if (!isWorld && !securities_.contains(lowerCaseCode)) {
        return std::nullopt;
    }
    const Kind& kind = isWorld ? worldIndex : kindOf(lowerCaseCode);
    const TradingMoment moment = tradingMoment(now);
    PracticeMinutes minutes;
    for (int elapsed = 0; elapsed <= moment.elapsed; elapsed += secondsPerMinute) {
        const Quote quote = quoteOf(kind, keyOf(lowerCaseCode), {moment.day, elapsed});
        minutes.formerClose = static_cast<double>(quote.prices.formerClose) * kind.step;
        if (!isSuspended(lowerCaseCode)) {
            minutes.prices.push_back(static_cast<double>(quote.prices.last) * kind.step);
        }
    }
    return minutes;
}

double PracticeQuotes::numberOf(const QString& lowerCaseCode, quint64 index) const {
    return evenNumber(keyOf(lowerCaseCode), index);
}

QString PracticeQuotes::values(const QString& code, const QDateTime& now) const {
    const TradingMoment moment = tradingMoment(now);
    if (const Index* world = worldIndexOf(code)) {
        const Quote quote = quoteOf(worldIndex, keyOf(code), moment);
        return (world->name.toString() + u',') + changeFields(worldIndex, quote.prices).join(u',');
    }
    const bool isShort = code.startsWith(shortPrefix);
    const QString plain = isShort ? code.mid(shortPrefix.size()) : code;
    const auto known = securities_.constFind(plain);
    if (known == securities_.constEnd()) {
        return {};
    }
    const Kind& kind = kindOf(plain);
    const quint64 key = keyOf(plain);
    Quote traded = quoteOf(kind, key, moment);
    if (pace_ == Pace::lively && !kind.isIndex) {
        traded.prices = livelyPrices(traded.prices, key, now);
    }
    const Quote quote = known->suspended ? suspended(traded) : traded;
    if (isShort) {
        return known->name + u',' + shortFields(kind, quote).join(u',');
    }
    const QString fields = fullFields(kind, quote, key, moment).join(u',');
    return known->name + u',' + fields + (isShanghai(plain) ? QStringLiteral(",") : QString());
}

}  // namespace guanchao
