// 分时线: the prices of one stock in the course of a day, as they were asked for, minute by minute.
#pragma once

#include <QDate>
#include <QList>
#include <optional>

#include "base/candles.h"

namespace guanchao {

// Small: a whole market has a million of them.
struct DayPoint {
    quint16 minute = 0;  // of the day
    float price = 0;     // in yuan or points
    float volume = 0;    // in shares, since the open
    float turnover = 0;  // in yuan, likewise

    bool operator==(const DayPoint&) const = default;
};

struct DayLine {
    QDate day;
    double formerClose = 0;  // as the prices
    QList<DayPoint> points;  // by their minutes, each once
};

inline constexpr int lastTradingMinute = 240;

// How many of the trading minutes of a day are over then, 0 to 240; the pause at noon has none.
int tradingMinute(int minuteOfDay);

// 均价: what a share has cost in the mean since the open; nothing where the figures, as those of an
// index, tell no price.
std::optional<double> meanPrice(const DayPoint& point);

// What was traded in a minute, in the mean since the point before it, in shares.
double volumePerMinute(const DayLine& line, qsizetype point);

// As far above the former close as below it, so that it lies in the middle.
PriceRange pricesOf(const DayLine& line);

}  // namespace guanchao
