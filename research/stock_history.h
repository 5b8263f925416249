// The histories of single stocks, from the second history database: each is read at its first use
// and kept. Raises StoreError.
#pragma once

#include <QSet>
#include <memory>
#include <unordered_map>

#include "research/stock_columns.h"
#include "store/stores.h"

namespace guanchao {

class StockHistory {
public:
    explicit StockHistory(const StoreFile& secondHistory);

    // A stock without a table gets one from the template nishihq2. Lasts as long as this.
    const StockColumns& of(const QString& dm);

    size_t bytes() const;

private:
    void makeTableIfMissing(const QString& dm);

    Connection connection_;
    QSet<QString> tables_;
    std::unordered_map<QString, StockColumns> stocks_;
};

}  // namespace guanchao
