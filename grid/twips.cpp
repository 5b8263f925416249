#include "grid/twips.h"

#include <algorithm>

namespace guanchao {

namespace {

constexpr int twipsPerInch = 1440;
// The width of a digit in the font for which the widths were chosen, in twips.
constexpr int digitTwips = 90;

}  // namespace

int pixelsOf(int twips, const QWidget& widget) {
    const double digit = widget.fontMetrics().horizontalAdvance(u'0');
    const double standardDigit =
        static_cast<double>(digitTwips) * widget.logicalDpiX() / twipsPerInch;
    const double scale = std::max(1.0, digit / standardDigit);
    return qRound(twips * scale * widget.logicalDpiX() / twipsPerInch);
}

}  // namespace guanchao
