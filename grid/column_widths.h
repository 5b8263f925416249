// The widths of the columns of a grid's view, in pixels: those of the grid, wider where a number, a
// code or a moment needs it, and the last one up to the edge of the view. A column that the user
// has drawn keeps that width in every later fill, known by its header.
#pragma once

#include <QHash>
#include <QTableView>

#include "grid/result_grid.h"

namespace guanchao {

class ColumnWidths {
public:
    explicit ColumnWidths(QTableView& view) : view_(view) {}

    void apply(const ResultGrid& grid);
    void widenLast(const ResultGrid& grid);

    // Called for each change of a width: one that this class hasn't made is the user's.
    void sectionResized(const ResultGrid& grid, int col, int width);

private:
    int widthOf(const ResultGrid& grid, int col) const;
    int widthOfKeys(const ResultGrid& grid, int col) const;

    QTableView& view_;
    QHash<QString, int> drawn_;  // by header
    bool applying_ = false;
};

// The font of the column's cells in a view whose own is `font`.
QFont fontOf(const ResultGrid& grid, int col, QFont font);

}  // namespace guanchao
