// What the rankings of the internet figures and their histories have in common: how a grid is
// filled, which colours the columns take by their position, and how a row is found.
#pragma once

#include <optional>

#include "base/day_values.h"
#include "grid/result_grid.h"
#include "heat/news_notes.h"
#include "store/recordset.h"

namespace guanchao {

// The columns that name the day and the item of a row.
constexpr int heatDayColumn = 1;
constexpr int heatItemColumn = 2;

// For a growth that compares with nothing.
inline const QString noGrowthWord = QStringLiteral("无");

// The room for the line of the last days in the column of items.
constexpr int sparklineTwips = 1100;

using DressRow = void (*)(ResultGrid& grid, int row);

// Clears the grid, pours the recordset into it and dresses each data row; views see it at once.
void fillHeatGrid(Recordset& recordset, ResultGrid& grid, const QList<int>& widths,
                  DressRow dressRow);

// In the rows with notes: shows the counts that are lower bounds as such, and a growth that
// compares with nothing as a word without a colour.
void showNotes(ResultGrid& grid, const NewsNotes& notes);

// A grid without a table.
void emptyHeatGrid(ResultGrid& grid);

// Sets the colour of each of the columns.
void colourColumns(ResultGrid& grid, int row, const QList<int>& cols, Colour colour);
// By the sign of each cell: red for 0 and above.
void colourBySign(ResultGrid& grid, int row, const QList<int>& cols);

// The first row of a ranking whose item contains the text without the blanks at its ends.
std::optional<int> findHeatRow(const ResultGrid& grid, const QString& text);

// A line of a plot: the words of its value and the fields of a history that add up to it.
struct CountLine {
    QString words;
    QStringList fields;
    bool isCustom = false;  // not counted on a day without custom days
};

// The days of a history (newest first) for its plot, oldest first.
QList<DayValues> dayValues(Recordset& history, const QList<CountLine>& lines,
                           const NewsNotes& notes);

}  // namespace guanchao
