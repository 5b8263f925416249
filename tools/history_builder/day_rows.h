// Day data as CSV, the source of the history databases. UTF-8, a header, then one line a stock and
// day: dm,shijian,kp,zg,zd,sp,qiansp,chengjiaol,chengjiaoe,fuquanyz (code, day as yyyy-MM-dd, open,
// high, low, close, former close, volume, turnover, adjustment factor). Prices in yuan.
#pragma once

#include <QDate>
#include <QList>
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

// Raise std::runtime_error, in Chinese and with the line's number, for a file that can't be read
// and for the first bad row.
QList<DayRow> readDayRows(const QString& path);
// A header, then zhutiname,dm; further fields are not read.
QList<ThemeMember> readThemeMembers(const QString& path);

}  // namespace guanchao
