#include "research/history_columns.h"

#include <QFileInfo>

namespace guanchao {

FileStamp stampOf(const StoreFile& file) {
    const QFileInfo info(file.path);
    return {file.path, info.size(), info.lastModified()};
}

void HistoryColumns::take(const StoreFile& firstHistory, const StoreFile& secondHistory) {
    const FileStamp first = stampOf(firstHistory);
    if (first != first_) {
        market_.reset();
        first_ = first;
    }
    const FileStamp second = stampOf(secondHistory);
    if (second != second_) {
        stocks_.clear();
        second_ = second;
    }
}

const MarketColumns& HistoryColumns::market(Connection& firstHistory,
                                            const MarketColumns::Meanwhile& meanwhile) {
    if (!market_) {
        market_ = std::make_unique<MarketColumns>(firstHistory, meanwhile);
    }
    return *market_;
}

size_t HistoryColumns::bytes() const {
    size_t sum = market_ ? market_->bytes() : 0;
    for (const auto& [dm, stock] : stocks_) {
        sum += stock.bytes();
    }
    return sum;
}

}  // namespace guanchao
