// Tables of the program's own, whose columns no statement gives.
#pragma once

#include "grid/result_grid.h"

namespace guanchao {

struct TableColumn {
    QString title;
    int width;  // in twips
};

// Empties the grid and gives it these columns behind that of the row numbers, and so many rows.
// Without rows it is an empty grid, whose view shows its hint.
void beginTable(ResultGrid& grid, const QList<TableColumn>& columns, qsizetype rows,
                int numberWidth = 500);

// A gain in percent, in red or green by its sign, 0 in red; one that is no number leaves the cell
// empty.
void setGain(ResultGrid& grid, int row, int col, double gain);

}  // namespace guanchao
