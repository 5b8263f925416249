// 热度图: the figures of all items by day as a table, the newest day first, each cell coloured.
#pragma once

#include "grid/result_grid.h"
#include "heat/heat_days.h"

namespace guanchao {

inline constexpr int mapItemColumn = 1;

// Percent from which on a growth has the full colour.
inline constexpr double fullGrowth = 100;

// A growth by itself, a count or a total beside the furthest from 0 of its item. The items that had
// most on the newest day come first. A day that was not collected stays empty.
void fillHeatMap(const HeatDays& days, const HeatSubject& subject, const DayField& field,
                 ResultGrid& grid);

}  // namespace guanchao
