#include "grid/header_sort.h"

namespace guanchao {

void HeaderSort::enable(const QStringList& dateWords) {
    enabled_ = true;
    dateWords_ = dateWords;
    header_.setSectionsClickable(true);
    header_.setSortIndicatorShown(true);
    showArrow();
}

void HeaderSort::sort(ResultGrid& grid, int col) {
    if (enabled_) {
        sortByHeader(grid, col, dateWords_, *last_);
        shown_ = {grid.textMatrix(0, col), col, *last_};
        showArrow();
    }
}

void HeaderSort::followFill(ResultGrid& grid) {
    const bool same = shown_ && grid.isRefill() && shown_->col < grid.cols() &&
                      grid.textMatrix(0, shown_->col) == shown_->header;
    if (same) {
        grid.orderRows(sortedRows(grid, shown_->col, shown_->code));
    } else {
        shown_.reset();
    }
    showArrow();
}

// The arrow points up where values rise downwards, as in every program of the market; the toolkit's
// own points the other way.
void HeaderSort::showArrow() {
    const bool up = shown_ && isAscending(shown_->code);
    header_.setSortIndicator(shown_ ? shown_->col : -1,
                             up ? Qt::DescendingOrder : Qt::AscendingOrder);
}

}  // namespace guanchao
