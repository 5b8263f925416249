#include "grid/colours.h"

#include "base/values.h"

namespace guanchao {

Colour signColour(QStringView cellText) {
    const QStringView number = cellText.trimmed();
    return number.startsWith(u'-') && numericPrefix(number) < 0 ? fallColour : riseColour;
}

}  // namespace guanchao
