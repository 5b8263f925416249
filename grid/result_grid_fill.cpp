// What views are shown at the end of a fill.
#include <QHash>
#include <utility>

#include "grid/result_grid.h"

namespace guanchao {

const ResultGrid::Cell& ResultGrid::Former::cell(int row, int col) const {
    return cells[static_cast<size_t>(order[static_cast<size_t>(row)]) * static_cast<size_t>(cols) +
                 static_cast<size_t>(col)];
}

// Empty if the row is about no item.
template <typename Table>
QStringList ResultGrid::keyIn(const Table& table, int row) const {
    QStringList key;
    for (const int col : keyColumns_) {
        if (row == 0 || col >= cols_) {
            return {};
        }
        key << textOf(table.cell(row, col));
    }
    return key.join(QString()).isEmpty() ? QStringList() : key;
}

void ResultGrid::beginFill(bool isRefill) {
    if (fills_++ == 0) {
        refill_ = isRefill;
        markedKey_ = keyOf(markedRow());
        if (isRefill) {
            emit refillBegins();
            former_ = Former{rows_, cols_, cells_, order_, fonts_};
        }
    }
}

void ResultGrid::endFill() {
    if (fills_ == 1) {
        emit fillEnds();
    }
    if (--fills_ == 0) {
        markKey();
        showFill();
        emit filled();
    }
}

void ResultGrid::showFill() {
    const std::optional<Former> former = std::exchange(former_, std::nullopt);
    const bool sameLooks = former && hasLooksOf(*former);
    if (sameLooks && hasItemsOf(*former)) {
        showChangedCells(*former);
        return;
    }
    const std::vector<int> newRows = sameLooks ? newRowsOf(*former) : std::vector<int>();
    if (!newRows.empty()) {
        emit layoutAboutToBeChanged({}, VerticalSortHint);
        movePersistentIndexes(newRows);
        emit layoutChanged({}, VerticalSortHint);
        return;
    }
    beginResetModel();
    endResetModel();
}

bool ResultGrid::hasLooksOf(const Former& former) const {
    bool same = former.rows == rows_ && former.cols == cols_ && former.fonts == fonts_;
    for (int col = 0; same && col < cols_; ++col) {
        same = former.cell(0, col) == cell(0, col);
    }
    return same;
}

// The same items in the same rows.
bool ResultGrid::hasItemsOf(const Former& former) const {
    for (const int col : keyColumns_) {
        for (int row = 1; row < rows_ && col < cols_; ++row) {
            if (textOf(former.cell(row, col)) != textMatrix(row, col)) {
                return false;
            }
        }
    }
    return true;
}

// Where each row of the former table stands now; empty if the items aren't the same, or one of them
// has no row of its own.
std::vector<int> ResultGrid::newRowsOf(const Former& former) const {
    QHash<QStringList, int> rows;
    rows.reserve(rows_);
    for (int row = 1; row < rows_; ++row) {
        rows[keyOf(row)] = row;
    }
    std::vector<int> newRows = {0};
    newRows.reserve(static_cast<size_t>(rows_));
    for (int row = 1; row < rows_; ++row) {
        newRows.push_back(rows.take(keyIn(former, row)));
        if (newRows.back() == 0) {
            return {};
        }
    }
    return newRows;
}

// Few cells are told one by one: of a range of cells a view paints all that it shows.
void ResultGrid::showChangedCells(const Former& former) {
    constexpr size_t fewCells = 1000;
    std::vector<QModelIndex> changed;
    for (int row = 1; row < rows_; ++row) {
        for (int col = 0; col < cols_; ++col) {
            if (former.cell(row, col) != cell(row, col)) {
                changed.push_back(index(row - 1, col));
            }
        }
    }
    if (changed.size() > fewCells) {
        emit dataChanged(index(0, 0), index(rows_ - 2, cols_ - 1));
        return;
    }
    for (const QModelIndex& it : changed) {
        emit dataChanged(it, it);
    }
}

void ResultGrid::markKey() {
    if (markedKey_.isEmpty()) {
        return;
    }
    setRow(0);
    for (int row = 1; row < rows_; ++row) {
        if (keyOf(row) == markedKey_) {
            mark(row);
            return;
        }
    }
}

}  // namespace guanchao
