// Which days are traded and which is over, told from the calendar and the local clock alone: no
// holidays are known.
#pragma once

#include <QDateTime>

namespace guanchao {

inline const QTime marketClose(15, 0);

// From Monday to Friday.
bool isWeekday(const QDate& day);

// Today from the close at 15:00 on, before it the day before.
QDate lastDayOver(const QDateTime& now);

// The last weekday up to that one.
QDate lastWeekdayOver(const QDateTime& now);

}  // namespace guanchao
