// A day of a stock and a membership as the history databases keep them.
#pragma once

#include <QDate>
#include <QString>
#include <cmath>
#include <cstdlib>
#include <functional>

namespace guanchao {

// Prices in hundredths of a yuan, unadjusted.
struct DayRow {
    QString dm;
    QDate day;
    qint64 open = 0;
    qint64 high = 0;
    qint64 low = 0;
    qint64 close = 0;
    qint64 formerClose = 0;  // 0: not told
    double volume = 0;
    double turnover = 0;
    double factor = 1;  // 复权因子: the price times this is the adjusted price
};

// The close of the day before in the prices of a day with that factor; 0 for one that no price is,
// as it comes of factors that are none.
inline qint64 formerCloseBy(const DayRow& before, double factor) {
    constexpr double mostPrice = 1e8;  // in hundredths
    const double close = static_cast<double>(before.close) * before.factor / factor;
    return close < mostPrice ? std::llround(close) : 0;
}

// Whether the former close of a day was made by the day before; what an exchange told can differ.
inline bool goesBy(const DayRow& before, const DayRow& day) {
    return day.factor > 0 && std::abs(day.formerClose - formerCloseBy(before, day.factor)) <= 1;
}

using TakeDay = std::function<void(const DayRow& row)>;

// An index has a table of its own, but no rows in geguhq.
inline bool isIndex(const QString& dm) {
    return dm.startsWith(QStringLiteral("SH000")) || dm.startsWith(QStringLiteral("SZ399"));
}

struct ThemeMember {
    QString theme;
    QString dm;
};

}  // namespace guanchao
