// What the readers of day data share.
#pragma once

#include "research/day_row.h"

namespace guanchao {

// Raises std::runtime_error, in Chinese, for what no day can be: prices out of order, as broken
// lines and swapped columns give them, a day before 1990 or behind 2099.
void checkRow(const DayRow& row);

// Rows of a source that are none of the history's.
struct SkippedRows {
    qint64 beijing = 0;     // of the exchange in Beijing
    qint64 halted = 0;      // without a price or a volume
    qint64 otherKinds = 0;  // funds, bonds and B shares, whose prices have another measure
    qint64 future = 0;      // of days to come
};

}  // namespace guanchao
