// The rows of a result grid that are selected in its view, which count as in the grid, and which
// of them are selected again after a fill.
#pragma once

#include <QSet>
#include <QStringList>
#include <QTableView>

#include "grid/result_grid.h"

namespace guanchao {

bool isSelected(const QTableView& view, int row);

// In their order.
QList<int> selectedRows(const QTableView& view);

// Through a fill that shows the same list anew: the view shows a list that has got or lost rows as
// another one, in which nothing would be selected.
class KeptSelection {
public:
    void note(const QTableView& view, const ResultGrid& grid);
    // Where more than one row was selected, and one is marked.
    void selectAgain(QTableView& view, const ResultGrid& grid);

private:
    QSet<QStringList> items_;
};

}  // namespace guanchao
