// The colours of cells in the result grids, as 0xRRGGBB; ground and header are in the style sheet.
#pragma once

#include <QStringView>
#include <cstdint>

namespace guanchao {

using Colour = std::uint32_t;

constexpr Colour rgb(unsigned red, unsigned green, unsigned blue) {
    return (red << 16) | (green << 8) | blue;
}

constexpr Colour textColour = rgb(192, 192, 192);
constexpr Colour darkTextColour = rgb(0, 0, 0);    // on a light ground
constexpr Colour themeColour = rgb(255, 255, 82);  // the name of a theme
constexpr Colour stockColour = rgb(82, 255, 255);  // a stock's short name
constexpr Colour firedGround = rgb(112, 64, 0);    // of a monitor whose alarm was not looked at
constexpr Colour riseColour = rgb(255, 82, 82);    // the market's red: 0 and above
constexpr Colour fallColour = rgb(82, 255, 82);    // below 0

// True for a ground on which dark text reads better than light.
bool isLight(Colour colour);

// Red or green by the sign of the number that the cell's text begins with.
Colour signColour(QStringView cellText);

}  // namespace guanchao
