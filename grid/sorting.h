// Sorting of result grids: the comparison behind each sort code, and what a click on a header does.
#pragma once

#include <QStringView>
#include <vector>

#include "grid/result_grid.h"

namespace guanchao {

// The indexes of `keys` in sorted order; equal keys keep theirs. Generic codes compare texts that
// read as numbers as numbers, before all other texts, and these by the Chinese collation.
std::vector<int> sortedOrder(const std::vector<QStringView>& keys, SortCode code);

// The code that follows `last`: as text where the header holds one of the window's date words,
// generic elsewhere; ascending first, then flipping for each repeated click of that kind.
SortCode nextSortCode(const QString& header, const QStringList& dateWords, SortCode last);

// Sorts by the header of `col`, remembers the code in `last`, numbers the rows anew. Views see it
// at once in the end; a failure leaves redraw off until the next fill.
void sortByHeader(ResultGrid& grid, int col, const QStringList& dateWords, SortCode& last);

// A click on a cell: one on the header sorts by it, any other does nothing. A failure ends it
// without a word. In a window without date words every column is sorted as numbers and texts.
void sortOnHeaderClick(ResultGrid& grid, int row, int col, const QStringList& dateWords,
                       SortCode& last);

// 序号: column 0 counts the rows in the order of display.
void writeRowNumbers(ResultGrid& grid);

}  // namespace guanchao
