// Which trading day is over, told from the local clock alone: no holidays are known.
#pragma once

#include <QDateTime>

namespace guanchao {

inline const QTime marketClose(15, 0);

// Today from the close at 15:00 on, before it the day before.
QDate lastDayOver(const QDateTime& now);

}  // namespace guanchao
