// The colours of the two style sheets, dark and light, by the names under which sheet.qss uses
// them. Words on their ground have a contrast of 4.5 or more.
#pragma once

#include <QColor>
#include <QString>

namespace guanchao {

enum class Sheet : std::uint8_t { dark, light };

// Raises std::out_of_range for a name that no sheet has.
QColor colourOf(Sheet sheet, const QString& name);

// The colour, as for words, so that it can be read on the ground: base/contrast.
QColor readableColour(const QColor& colour, const QColor& ground);

// The style sheet with its colours, and the points of the tables' font.
QString styleSheetOf(Sheet sheet, int tablePoints);

}  // namespace guanchao
