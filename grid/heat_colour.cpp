#include "grid/heat_colour.h"

#include <algorithm>
#include <cmath>

namespace guanchao {

namespace {

// riseColour and fallColour are for words: white can't be read on them.
constexpr Colour noHeat = rgb(62, 66, 73);
constexpr Colour riseHeat = rgb(196, 32, 38);
constexpr Colour fallHeat = rgb(14, 122, 44);

unsigned mixed(Colour from, Colour to, unsigned shift, double part) {
    const double begin = from >> shift & 0xFF;
    const double end = to >> shift & 0xFF;
    return static_cast<unsigned>(std::lround(begin + (end - begin) * part));
}

}  // namespace

Colour heatColour(double value, double full) {
    const bool isHot = full > 0 && !std::isnan(value);
    const double part = isHot ? std::min(std::abs(value) / full, 1.0) : 0;
    const Colour end = value < 0 ? fallHeat : riseHeat;
    return rgb(mixed(noHeat, end, 16, part), mixed(noHeat, end, 8, part),
               mixed(noHeat, end, 0, part));
}

void setHeat(ResultGrid& grid, int row, int col, double value, double full) {
    grid.setCellBackColor(row, col, heatColour(value, full));
    grid.setCellForeColor(row, col, heatWords);
}

}  // namespace guanchao
