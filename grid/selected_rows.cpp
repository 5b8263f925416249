#include "grid/selected_rows.h"

#include <utility>

namespace guanchao {

bool isSelected(const QTableView& view, int row) {
    return view.selectionModel()->isSelected(view.model()->index(row - 1, 0));
}

QList<int> selectedRows(const QTableView& view) {
    QList<int> rows;
    for (int row = 1; view.selectionModel() && row <= view.model()->rowCount(); ++row) {
        if (isSelected(view, row)) {
            rows << row;
        }
    }
    return rows;
}

void KeptSelection::note(const QTableView& view, const ResultGrid& grid) {
    items_.clear();
    for (const QModelIndex& it : view.selectionModel()->selectedRows()) {
        items_ << grid.keyOf(it.row() + 1);
    }
}

void KeptSelection::selectAgain(QTableView& view, const ResultGrid& grid) {
    const QSet<QStringList> former = std::exchange(items_, {});
    const bool isKept = view.selectionModel()->selectedRows().size() > 1;
    if (former.size() < 2 || isKept || grid.markedRow() == 0) {
        return;
    }
    QItemSelection rows;
    for (int row = 1; row < grid.rows(); ++row) {
        if (former.contains(grid.keyOf(row))) {
            rows.select(grid.index(row - 1, 0), grid.index(row - 1, grid.cols() - 1));
        }
    }
    view.selectionModel()->select(rows, QItemSelectionModel::Select);
}

}  // namespace guanchao
