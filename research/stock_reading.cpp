#include "research/stock_reading.h"

#include "research/history_store.h"
#include "store/store_error.h"

namespace guanchao {

StockReading::StockReading(const StoreFile& secondHistory, const Memberships& memberships,
                           const StocksByCode& known)
    : secondHistory_(secondHistory) {
    try {
        Connection store = secondHistory.open();
        const QSet<QString> tables = tablesOf(store);
        for (size_t stock = 0; stock < memberships.stockCount(); ++stock) {
            const QString dm = memberships.dm(static_cast<std::int32_t>(stock));
            if (tables.contains(dm.toUpper()) && !known.contains(dm)) {
                codes_.push_back(dm);
            }
        }
    } catch (const StoreError&) {
        codes_.clear();
    }
    read_.resize(codes_.size());
}

void StockReading::readOn(const std::function<void(int done, int total)>& meanwhile) {
    try {
        Connection store = secondHistory_.open();
        for (size_t at = next_++, first = at; at < codes_.size(); at = next_++) {
            meanwhile(static_cast<int>(at - first), static_cast<int>(codes_.size() - first));
            read_[at].emplace(store, codes_[at]);
        }
    } catch (const StoreError&) {
        stop();
    }
}

void StockReading::moveInto(StocksByCode& stocks) {
    for (size_t at = 0; at < codes_.size(); ++at) {
        if (read_[at]) {
            stocks.emplace(codes_[at], std::move(*read_[at]));
        }
    }
}

}  // namespace guanchao
