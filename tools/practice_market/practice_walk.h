// The prices behind the practice market: a walk that follows from a key and a moment alone, so the
// same clock always shows the same price. Prices are whole numbers of the instrument's smallest
// step (0.01 yuan for a stock). No input besides the arguments, no errors.
#pragma once

#include <QDateTime>

namespace guanchao {

inline constexpr int tradingSeconds = 4 * 60 * 60;

// A point of the trading day: 09:30-11:30 and 13:00-15:00, Monday to Friday.
struct TradingMoment {
    QDate day;
    int elapsed;  // seconds of trading so far, 0 to tradingSeconds

    QTime clock() const;
};

// What the market shows at `now`: outside the trading hours, the last moment before.
TradingMoment tradingMoment(const QDateTime& now);

// The last day whose trading is over at `now`.
QDate lastEndedDay(const QDateTime& now);

// A key that follows from the text and the seed alone (FNV-1a).
quint64 walkKey(const QString& text, quint32 seed = 0);

// A number from 0 up to, not including, 1 that follows from the key and the index alone.
double evenNumber(quint64 key, quint64 index);

struct DayPrices {
    qint64 formerClose = 0;
    qint64 open = 0;
    qint64 last = 0;
    qint64 high = 0;
    qint64 low = 0;
};

// The day so far, about a level between `lowest` and `highest` that the key chooses.
DayPrices dayPrices(quint64 key, double lowest, double highest, const TradingMoment& moment);

// The same day in a lively market: the last price swings widely about the former close, twice a
// minute, at any hour and nearly in step for all keys, so that gains of themes swing with it.
DayPrices livelyPrices(const DayPrices& day, quint64 key, const QDateTime& now);

}  // namespace guanchao
