// Day data as CSV, the source of the history databases. UTF-8, a header, then one line a stock and
// day: dm,shijian,kp,zg,zd,sp,qiansp,chengjiaol,chengjiaoe,fuquanyz (code, day as yyyy-MM-dd, open,
// high, low, close, former close, volume, turnover, adjustment factor). Prices in yuan.
#pragma once

#include <QList>
#include <QString>

#include "research/day_row.h"

namespace guanchao {

// Raise std::runtime_error, in Chinese and with the line's number, for a file that can't be read
// and for the first bad row.
QList<DayRow> readDayRows(const QString& path);
// A header, then zhutiname,dm; further fields are not read.
QList<ThemeMember> readThemeMembers(const QString& path);

}  // namespace guanchao
