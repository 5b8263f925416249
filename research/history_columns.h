// Both history databases in columns, kept from run to run as long as their files stay as they are:
// ten years of the whole market take about 170 MB for the market and 320 MB for its stocks. For one
// thread at a time.
#pragma once

#include <memory>
#include <optional>

#include "research/stock_columns.h"
#include "research/theme_days.h"
#include "store/file_stamp.h"

namespace guanchao {

class StockReading;

class HistoryColumns {
public:
    using Meanwhile = MarketColumns::Meanwhile;

    // For the beginning of a run: lets go of what has changed since it was read.
    void take(const StoreFile& firstHistory, const StoreFile& secondHistory);

    // Reads what is not there of the stocks of all themes, in two threads: one that has no table is
    // left out. Raises what `meanwhile` raises.
    void readStocks(const StoreFile& secondHistory, const Memberships& memberships,
                    const Meanwhile& meanwhile);
    // The same, and the market beside it. Raises StoreError.
    void readAll(const StoreFile& firstHistory, const StoreFile& secondHistory,
                 const Meanwhile& meanwhile);

    // Once all has been read.
    const MarketColumns& market() const { return *market_; }
    // Counts them at their first use.
    const ThemeDays& themeDays(const Meanwhile& meanwhile);
    // Those that have been read, by their codes.
    StocksByCode& stocks() { return stocks_; }

    size_t bytes() const;

private:
    void readBeside(StockReading& stocks, const std::function<void()>& ownWork,
                    const Meanwhile& meanwhile);

    FileStamp first_, second_;
    std::unique_ptr<MarketColumns> market_;
    std::optional<ThemeDays> themeDays_;
    StocksByCode stocks_;
    bool stocksAreRead_ = false;  // all that the themes have and that could be
};

}  // namespace guanchao
