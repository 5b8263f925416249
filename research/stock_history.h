// The histories of single stocks, from the second history database: each is read at its first use
// and kept among the columns. Raises StoreError.
#pragma once

#include <QSet>

#include "research/stock_columns.h"
#include "store/stores.h"

namespace guanchao {

class StockHistory {
public:
    StockHistory(const StoreFile& secondHistory, StocksByCode& stocks);

    // A stock without a table gets one from the template nishihq2. Lasts as long as the columns.
    const StockColumns& of(const QString& dm);

private:
    void makeTableIfMissing(const QString& dm);

    Connection connection_;
    QSet<QString> tables_;
    StocksByCode& stocks_;
};

}  // namespace guanchao
