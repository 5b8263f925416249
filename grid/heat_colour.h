// The ground of a cell or box that tells a number by its colour: the darker red the more it lies
// above 0, the darker green the more below. The same ground on dark and light sheets.
#pragma once

#include "grid/result_grid.h"

namespace guanchao {

// On every heat colour they have a contrast of 4.5 or more.
constexpr Colour heatWords = rgb(255, 255, 255);

// Grey at 0 and for what is no number, the full red or green from `full` on.
Colour heatColour(double value, double full);

// Ground and words of a cell.
void setHeat(ResultGrid& grid, int row, int col, double value, double full);

}  // namespace guanchao
