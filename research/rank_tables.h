// The two tables of all themes over a range of days: their ranks, and the gain of each week as a
// heat map, red for a rise and green for a fall, the stronger the further from 0. Column 2 of the
// ranks and column 1 of the weeks have the theme.
#pragma once

#include "grid/result_grid.h"
#include "research/range_ranks.h"

namespace guanchao {

inline constexpr int rankThemeColumn = 2;
inline constexpr int weekThemeColumn = 1;

void fillRanks(const RangeRanks& ranks, ResultGrid& grid);
// A week without prices of a theme stays empty.
void fillWeeks(const RangeRanks& ranks, ResultGrid& grid);

// What the ranks rest on, in a line or two.
QString ranksLine(const RangeRanks& ranks, const RangeQuestion& question);

}  // namespace guanchao
