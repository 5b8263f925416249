#include "base/contrast.h"

#include <algorithm>
#include <cmath>

namespace guanchao {

namespace {

constexpr double readable = 4.5;

double linear(std::uint32_t part) {
    const double share = part / 255.0;
    return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double luminance(std::uint32_t colour) {
    return 0.2126 * linear(colour >> 16 & 0xFF) + 0.7152 * linear(colour >> 8 & 0xFF) +
           0.0722 * linear(colour & 0xFF);
}

// A step of a sixteenth of the way to black or white.
std::uint32_t nearer(std::uint32_t colour, bool white) {
    const auto part = [&](int shift) {
        const std::uint32_t old = colour >> shift & 0xFF;
        return white ? old + (255 - old + 15) / 16 : old - (old + 15) / 16;
    };
    return part(16) << 16 | part(8) << 8 | part(0);
}

}  // namespace

double contrast(std::uint32_t a, std::uint32_t b) {
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

std::uint32_t readableOn(std::uint32_t colour, std::uint32_t ground) {
    const bool white = luminance(ground) < 0.18;
    while (contrast(colour, ground) < readable && colour != (white ? 0xFFFFFFU : 0U)) {
        colour = nearer(colour, white);
    }
    return colour;
}

}  // namespace guanchao
