#include "research/history_shelf.h"

#include <utility>

namespace guanchao {

std::unique_ptr<HistoryColumns> HistoryShelf::take() {
    const std::scoped_lock lock(mutex_);
    auto taken = std::exchange(columns_, nullptr);
    return taken ? std::move(taken) : std::make_unique<HistoryColumns>();
}

void HistoryShelf::layBack(std::unique_ptr<HistoryColumns> columns) {
    const std::scoped_lock lock(mutex_);
    if (!columns_ || columns_->bytes() < columns->bytes()) {
        columns_ = std::move(columns);
    }
}

std::shared_ptr<HistoryShelf> SharedHistory::shelf() {
    std::shared_ptr<HistoryShelf> shelf = shelf_.lock();
    if (!shelf) {
        shelf = std::make_shared<HistoryShelf>();
        shelf_ = shelf;
    }
    return shelf;
}

}  // namespace guanchao
