// Both history databases in columns, kept from run to run as long as their files stay as they are:
// ten years of the whole market take about 170 MB for the market and 320 MB for its stocks. For one
// thread at a time.
#pragma once

#include <QDateTime>
#include <memory>
#include <unordered_map>

#include "research/market_columns.h"
#include "research/stock_columns.h"
#include "store/stores.h"

namespace guanchao {

// When a file was written last, as far as its folder tells.
struct FileStamp {
    QString path;
    qint64 size = 0;
    QDateTime written;

    bool operator==(const FileStamp&) const = default;
};

FileStamp stampOf(const StoreFile& file);

class HistoryColumns {
public:
    using Stocks = std::unordered_map<QString, StockColumns>;

    // For the beginning of a run: lets go of what has changed since it was read.
    void take(const StoreFile& firstHistory, const StoreFile& secondHistory);

    // Reads it if it is not there; see MarketColumns.
    const MarketColumns& market(Connection& firstHistory,
                                const MarketColumns::Meanwhile& meanwhile);
    // Those that have been read, by their codes.
    Stocks& stocks() { return stocks_; }

    size_t bytes() const;

private:
    FileStamp first_, second_;
    std::unique_ptr<MarketColumns> market_;
    Stocks stocks_;
};

}  // namespace guanchao
