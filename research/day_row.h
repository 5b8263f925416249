// A day of a stock and a membership as the history databases keep them.
#pragma once

#include <QDate>
#include <QString>

namespace guanchao {

// Prices in hundredths of a yuan.
struct DayRow {
    QString dm;
    QDate day;
    qint64 open = 0;
    qint64 high = 0;
    qint64 low = 0;
    qint64 close = 0;
    qint64 formerClose = 0;
    double volume = 0;
    double turnover = 0;
    double factor = 1;  // 复权因子: the price times this is the adjusted price
};

struct ThemeMember {
    QString theme;
    QString dm;
};

}  // namespace guanchao
