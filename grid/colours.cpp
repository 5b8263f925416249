#include "grid/colours.h"

#include "base/values.h"

namespace guanchao {

Colour signColour(QStringView cellText) {
    const QStringView number = cellText.trimmed();
    return number.startsWith(u'-') && numericPrefix(number) < 0 ? fallColour : riseColour;
}

bool isLight(Colour colour) {
    const Colour red = colour >> 16 & 0xFF, green = colour >> 8 & 0xFF, blue = colour & 0xFF;
    return 299 * red + 587 * green + 114 * blue > 128 * 1000;
}

}  // namespace guanchao
