// What the days of a reply must be like before anybody counts on them.
#pragma once

#include "services/bar_kind.h"

namespace guanchao {

// True for what can be a price, and for 0, with which a suspended day may come. Any other number is
// damage, and a gain against it would stay in the stores for good.
bool isPrice(double value);

// The bars of the range whose days are over; those around it are dropped. A fault where a day comes
// twice, out of order or from the future, or has prices that don't fit each other.
ReadBars checkedBars(const ReadBars& read, const BarRange& range);

}  // namespace guanchao
