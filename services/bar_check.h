// What the days of a reply must stand before anybody counts on them.
#pragma once

#include "services/bar_kind.h"

namespace guanchao {

// A suspended day may come with a close of 0. A number beyond the bounds of a price is damage, and
// a gain against it would stay for good.
bool isPrice(double value);

// The bars of the range whose days are over; those about it are dropped. A fault where a day comes
// twice, out of order or from the future, or has prices that don't fit each other.
ReadBars checkedBars(const ReadBars& read, const BarRange& range);

}  // namespace guanchao
