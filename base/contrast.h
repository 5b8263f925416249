// Whether words of one colour can be read on a ground of another. Colours are 0xRRGGBB.
#pragma once

#include <cstdint>

namespace guanchao {

// From 1 to 21, as the web's guidelines for readers count it.
double contrast(std::uint32_t a, std::uint32_t b);

// The colour, darkened or lightened until its contrast with the ground is 4.5.
std::uint32_t readableOn(std::uint32_t colour, std::uint32_t ground);

}  // namespace guanchao
