// A day of a stock and a membership as the history databases keep them.
#pragma once

#include <QDate>
#include <QString>
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
