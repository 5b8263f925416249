// Sorting of result grids: the comparison behind each sort code, and what a click on a header does.
#pragma once

#include <QStringList>
#include <vector>

#include "grid/result_grid.h"

namespace guanchao {

// How the rows are compared.
enum class SortCode : std::uint8_t {
    none = 0,
    genericAscending = 1,
    genericDescending = 2,
    textAscending = 5,
    textDescending = 6
};

bool isAscending(SortCode code);

// The data rows in the order of the column's cells; rows whose cells are equal keep theirs. Generic
// codes compare numbers as numbers, before all texts, and these by the Chinese collation.
std::vector<int> sortedRows(const ResultGrid& grid, int col, SortCode code);

// The code that follows `last`: as text where the header holds one of the window's date words,
// generic elsewhere; ascending first, then flipping for each repeated click of that kind.
SortCode nextSortCode(const QString& header, const QStringList& dateWords, SortCode last);

// Sorts by the header of `col` and remembers the code in `last`.
void sortByHeader(ResultGrid& grid, int col, const QStringList& dateWords, SortCode& last);

}  // namespace guanchao
