#include "grid/colours.h"

#include "store/values.h"

namespace guanchao {

Colour signColour(QStringView cellText) {
    return numericPrefix(cellText.trimmed()) < 0 ? fallColour : riseColour;
}

}  // namespace guanchao
