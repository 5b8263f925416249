#include "grid/colours.h"

#include "store/values.h"

namespace guanchao {

Colour signColour(QStringView cellText) {
    const QStringView number = cellText.trimmed();
    return number.startsWith(u'-') && numericPrefix(number) < 0 ? fallColour : riseColour;
}

}  // namespace guanchao
