// The trading hours of the exchanges, told from the local clock alone: no holidays are known.
#pragma once

#include <QDateTime>

namespace guanchao {

// True from Monday to Friday between 09:21:00 and 11:34:59 and between 12:56:00 and 15:04:59.
bool inTradingSession(const QDateTime& now);

}  // namespace guanchao
