// The rows of a grid as text for other programs: whole values, whatever is painted of them.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include "grid/result_grid.h"

namespace guanchao {

// The rows as a spreadsheet takes them from the clipboard: cells between tabs, each row with its
// line end, the headers first where there are several rows. Tabs and line ends of a cell become
// blanks.
QString copiedText(const ResultGrid& grid, const QList<int>& rows, const QList<int>& cols);

// Stands at the beginning of a CSV file: without it spreadsheets read another encoding.
inline const QByteArray csvMark = QByteArrayLiteral("\xEF\xBB\xBF");

// A row as a line of a CSV file, with its end. A text that a spreadsheet would take for a formula
// is put behind an apostrophe.
QString csvLine(const ResultGrid& grid, int row, const QList<int>& cols);

}  // namespace guanchao
