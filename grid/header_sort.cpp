#include "grid/header_sort.h"

namespace guanchao {

void HeaderSort::enable(const QStringList& dateWords) {
    enabled_ = true;
    dateWords_ = dateWords;
    header_.setSectionsClickable(true);
    header_.setSortIndicatorShown(true);
    forgetArrow();
}

// The arrow points up where values rise downwards, as in every program of the market; the toolkit's
// own points the other way.
void HeaderSort::sort(ResultGrid& grid, int col) {
    if (enabled_) {
        sortByHeader(grid, col, dateWords_, *last_);
        header_.setSortIndicator(col,
                                 isAscending(*last_) ? Qt::DescendingOrder : Qt::AscendingOrder);
    }
}

void HeaderSort::forgetArrow() {
    header_.setSortIndicator(-1, Qt::AscendingOrder);
}

}  // namespace guanchao
