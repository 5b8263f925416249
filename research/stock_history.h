// The day history of single stocks, from the second history database: a table a stock, named by its
// code. Prices are in hundredths of a yuan, as stored, but for fuquansp and fuquankp, the adjusted
// close and open. A statement on a stock without a table raises StoreError.
#pragma once

#include "research/indexed_copies.h"
#include "store/recordset.h"
#include "store/stores.h"

namespace guanchao {

class StockHistory {
public:
    explicit StockHistory(const StoreFile& secondHistory);

    // Makes the table of a stock that has none, from the template nishihq2; true if it did.
    bool makeTableIfMissing(const QString& dm);

    // Up to 30 days, newest first, the newest not after the day (yyyy-MM-dd).
    Recordset daysBack(const QString& dm, const QString& day);
    // Up to 10 days, oldest first: behind the day, and from the day on.
    Recordset daysAfter(const QString& dm, const QString& day);
    Recordset daysFrom(const QString& dm, const QString& day);

private:
    Recordset days(const QString& dm, const QString& condition);

    Connection connection_;
    IndexedCopies copies_;
};

}  // namespace guanchao
