// Twips, in which the grids' widths and the picker's height are told, as pixels of a window.
#pragma once

#include <QWidget>

namespace guanchao {

// Wider where the widget's font is larger than the 9 points for which the widths were chosen.
int pixelsOf(int twips, const QWidget& widget);

}  // namespace guanchao
