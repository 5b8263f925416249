// The trading hours of the exchanges, told from the local clock alone: no holidays are known.
#pragma once

#include <QDateTime>

#include "base/globals.h"

namespace guanchao {

// True from Monday to Friday between 09:21:00 and 11:34:59 and between 12:56:00 and 15:04:59.
bool inTradingSession(const QDateTime& now);

// Sets the flags of the session, 交易时段 and 监控开启: monitoring goes on and off with it, but for
// the day on which a hand has started or stopped it.
void followSession(Globals& globals, const QDateTime& now);

}  // namespace guanchao
