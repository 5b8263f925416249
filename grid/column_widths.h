// The widths of the columns of a grid's view, in pixels: those of the grid, wider where a number as
// it is painted, a code or a moment needs it, and the last one that is shown where its texts need
// it and the view has room; a view may give it all the room that is left. A column that the user
// has drawn keeps that width in every later fill and run, known by its header.
#pragma once

#include <QHash>
#include <QStringList>
#include <QTableView>

#include "grid/result_grid.h"

namespace guanchao {

class ColumnWidths {
public:
    explicit ColumnWidths(QTableView& view) : view_(view) {}

    // The last column that is shown ends at the edge of the view, from the next apply on.
    void fillView() { fillsView_ = true; }

    void apply(const ResultGrid& grid);
    void widenLast(const ResultGrid& grid);

    // Called for each change of a width: one that this class hasn't made is the user's.
    void sectionResized(const ResultGrid& grid, int col, int width);

    // The drawn ones are as wide as the others again, from the next apply on.
    void forgetDrawn() { drawn_.clear(); }

    // The drawn ones, "header=width" each.
    QStringList kept() const;
    void setKept(const QStringList& widths);

private:
    int lastShown(const ResultGrid& grid) const;
    int widthOf(const ResultGrid& grid, int col) const;
    int widthOfKeys(const ResultGrid& grid, int col) const;
    int widthOfText(const ResultGrid& grid, int col, const QString& text) const;

    QTableView& view_;
    QHash<QString, int> drawn_;  // by header
    int textsOfLast_ = 0;        // what its longest text needs
    bool fillsView_ = false;
    bool applying_ = false;
};

// The font of the column's cells in a view whose own is `font`.
QFont fontOf(const ResultGrid& grid, int col, QFont font);

}  // namespace guanchao
