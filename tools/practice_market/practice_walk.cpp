#include "tools/practice_market/practice_walk.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "services/trading_day.h"

namespace guanchao {

namespace {

const QTime morningOpen(9, 30);
const QTime afternoonOpen(13, 0);
constexpr int sessionSeconds = tradingSeconds / 2;

constexpr int knotSeconds = 60;
constexpr int lastKnot = tradingSeconds / knotSeconds;
constexpr int knotsPerSwing = 30;

// Shares of the price. The wave turns in 80 days or more, so that a close moves by at most 6 %
// even over a weekend, and no price leaves the limit of 10 % about the former close.
constexpr double closeWave = 0.10;
constexpr double closeNoise = 0.015;
constexpr double openingGap = 0.01;
constexpr double swing = 0.02;
constexpr double jitter = 0.004;

// Of three polls 20 seconds apart one always finds a swing above 5 %.
constexpr double livelySwing = 0.08;
constexpr double livelySteepness = 1.6;
constexpr double livelySeconds = 31;
constexpr double livelyLag = 0.05;  // of a turn, the most between two keys

QDate tradingDayBefore(QDate day) {
    do {
        day = day.addDays(-1);
    } while (!isWeekday(day));
    return day;
}

quint64 numberOf(const QDate& day) {
    return static_cast<quint64>(day.toJulianDay());
}

// The last step of the splitmix64 generator.
quint64 mixed(quint64 value) {
    value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9U;
    value = (value ^ (value >> 27)) * 0x94d049bb133111ebU;
    return value ^ (value >> 31);
}

// From -1 to 1.
double noise(quint64 key, quint64 index) {
    return 2 * evenNumber(key, index) - 1;
}

qint64 closeOf(quint64 key, double lowest, double highest, const QDate& day) {
    const double level = lowest * std::pow(highest / lowest, evenNumber(key, 0));
    const double daysPerTurn = 80 + 40 * evenNumber(key, 1);
    const double turns = static_cast<double>(numberOf(day)) / daysPerTurn + evenNumber(key, 2);
    const double wave = closeWave * std::sin(2 * std::numbers::pi * turns);
    return std::llround(level * (1 + wave + closeNoise * noise(mixed(key), numberOf(day))));
}

// A day's way from the open to the close: straight lines between knots a minute apart.
class DayPath {
public:
    DayPath(quint64 key, double formerClose, double close)
        : swingKey_(mixed(key + 1)),
          jitterKey_(mixed(key + 2)),
          formerClose_(formerClose),
          open_(formerClose * (1 + openingGap * noise(key, 0))),
          close_(close) {}

    double atKnot(int knot) const {
        const double part = static_cast<double>(knot) / lastKnot;
        const double farFromEnds = 4 * part * (1 - part);
        const double wandering =
            swing * swingAt(knot) + jitter * noise(jitterKey_, static_cast<quint64>(knot));
        return std::lerp(open_, close_, part) + formerClose_ * farFromEnds * wandering;
    }

    double at(int elapsed) const {
        const int knot = std::min(elapsed / knotSeconds, lastKnot - 1);
        const double part = static_cast<double>(elapsed - knot * knotSeconds) / knotSeconds;
        return std::lerp(atKnot(knot), atKnot(knot + 1), part);
    }

private:
    double swingAt(int knot) const {
        const auto turn = static_cast<quint64>(knot / knotsPerSwing);
        const double part = static_cast<double>(knot % knotsPerSwing) / knotsPerSwing;
        return std::lerp(noise(swingKey_, turn), noise(swingKey_, turn + 1), part);
    }

    quint64 swingKey_;
    quint64 jitterKey_;
    double formerClose_;
    double open_;
    double close_;
};

}  // namespace

QTime TradingMoment::clock() const {
    return elapsed <= sessionSeconds ? morningOpen.addSecs(elapsed)
                                     : afternoonOpen.addSecs(elapsed - sessionSeconds);
}

TradingMoment tradingMoment(const QDateTime& now) {
    const QDate day = now.date();
    const QTime time = now.time();
    if (!isWeekday(day) || time < morningOpen) {
        return {tradingDayBefore(day), tradingSeconds};
    }
    if (time < afternoonOpen) {
        return {day, std::min(morningOpen.secsTo(time), sessionSeconds)};
    }
    return {day, std::min(sessionSeconds + afternoonOpen.secsTo(time), tradingSeconds)};
}

QDate lastEndedDay(const QDateTime& now) {
    const TradingMoment moment = tradingMoment(now);
    return moment.elapsed < tradingSeconds ? tradingDayBefore(moment.day) : moment.day;
}

quint64 walkKey(const QString& text, quint32 seed) {
    quint64 key = 0xcbf29ce484222325U ^ seed;
    for (const QChar c : text) {
        key = (key ^ c.unicode()) * 0x100000001b3U;
    }
    return key;
}

double evenNumber(quint64 key, quint64 index) {
    return static_cast<double>(mixed(key + index * 0x9e3779b97f4a7c15U) >> 11) * 0x1.0p-53;
}

DayPrices dayPrices(quint64 key, double lowest, double highest, const TradingMoment& moment) {
    const qint64 formerClose = closeOf(key, lowest, highest, tradingDayBefore(moment.day));
    const qint64 close = closeOf(key, lowest, highest, moment.day);
    const DayPath path(mixed(key + numberOf(moment.day)), static_cast<double>(formerClose),
                       static_cast<double>(close));
    const double last = path.at(moment.elapsed);
    double high = last;
    double low = last;
    for (int knot = 0; knot <= moment.elapsed / knotSeconds; ++knot) {
        const double price = path.atKnot(knot);
        high = std::max(high, price);
        low = std::min(low, price);
    }
    return {formerClose, std::llround(path.atKnot(0)), std::llround(last), std::llround(high),
            std::llround(low)};
}

DayPrices livelyPrices(const DayPrices& day, quint64 key, const QDateTime& now) {
    const double seconds = static_cast<double>(now.toMSecsSinceEpoch()) / 1000;
    const double turns = seconds / livelySeconds + livelyLag * evenNumber(key, 0);
    const double wave = livelySteepness * std::sin(2 * std::numbers::pi * turns);
    const double share = livelySwing * std::clamp(wave, -1.0, 1.0);
    DayPrices prices = day;
    prices.last = std::llround(static_cast<double>(day.formerClose) * (1 + share));
    prices.high = std::max(day.high, prices.last);
    prices.low = std::min(day.low, prices.last);
    return prices;
}

}  // namespace guanchao
