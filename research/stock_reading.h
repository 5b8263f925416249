// The tables of many stocks into columns, by as many threads as read on. One that can't be read
// ends the reading for all: who uses that stock reads it by itself, and meets the failure there.
#pragma once

#include <atomic>
#include <functional>
#include <optional>
#include <vector>

#include "research/memberships.h"
#include "research/stock_columns.h"
#include "store/stores.h"

namespace guanchao {

class StockReading {
public:
    // Of the stocks that belong to a theme, have a table and are not among the known ones.
    StockReading(const StoreFile& secondHistory, const Memberships& memberships,
                 const StocksByCode& known);

    // Returns once none is left. `meanwhile` is called with how many have been begun since the
    // call, of how many; what it raises goes on.
    void readOn(const std::function<void(int done, int total)>& meanwhile);
    // From any thread: each ends behind the stock in work.
    void stop() { next_ = codes_.size(); }

    // Once no thread reads.
    void moveInto(StocksByCode& stocks);

private:
    const StoreFile& secondHistory_;
    std::vector<QString> codes_;
    std::vector<std::optional<StockColumns>> read_;  // by code
    std::atomic<size_t> next_ = 0;
};

}  // namespace guanchao
