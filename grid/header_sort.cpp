#include "grid/header_sort.h"

namespace guanchao {

namespace {

bool isSort(SortCode code) {
    return code == SortCode::genericAscending || code == SortCode::genericDescending ||
           code == SortCode::textAscending || code == SortCode::textDescending;
}

}  // namespace

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

void HeaderSort::forget() {
    shown_.reset();
    kept_.clear();
    *last_ = SortCode::none;
    showArrow();
}

void HeaderSort::followFill(ResultGrid& grid) {
    const std::optional<Sort> kept = enabled_ ? keptIn(grid) : std::nullopt;
    if (kept) {
        kept_.clear();
        *last_ = kept->code;
        shown_ = kept;
    } else if (!isSameList(grid)) {
        shown_.reset();
    }
    if (shown_) {
        grid.orderRows(sortedRows(grid, shown_->col, shown_->code));
    }
    showArrow();
}

bool HeaderSort::isSameList(const ResultGrid& grid) const {
    return shown_ && grid.isRefill() && shown_->col < grid.cols() &&
           grid.textMatrix(0, shown_->col) == shown_->header;
}

QString HeaderSort::kept() const {
    return shown_ ? shown_->header + u' ' + QString::number(static_cast<int>(shown_->code)) : kept_;
}

std::optional<HeaderSort::Sort> HeaderSort::keptIn(const ResultGrid& grid) const {
    const QString header = kept_.section(u' ', 0, -2);
    const auto code = static_cast<SortCode>(kept_.section(u' ', -1).toInt());
    for (int col = 1; col < grid.cols() && !header.isEmpty() && isSort(code); ++col) {
        if (grid.textMatrix(0, col) == header) {
            return Sort{header, col, code};
        }
    }
    return std::nullopt;
}

// The arrow points up where values rise downwards, as in every program of the market; the toolkit's
// own points the other way.
void HeaderSort::showArrow() {
    const bool up = shown_ && isAscending(shown_->code);
    header_.setSortIndicator(shown_ ? shown_->col : -1,
                             up ? Qt::DescendingOrder : Qt::AscendingOrder);
}

}  // namespace guanchao
