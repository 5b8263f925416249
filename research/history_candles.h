// The days of a stock from the second history database, for its chart.
#pragma once

#include "market/stored_candles.h"
#include "store/stores.h"

namespace guanchao {

class HistoryCandles : public StoredCandles {
public:
    explicit HistoryCandles(const Stores& stores) : stores_(stores) {}

    // Read in a thread of its own. None where there is no database.
    QCoro::Task<QList<Candle>> of(QString dm, std::stop_token stop) const override;

private:
    const Stores& stores_;
};

}  // namespace guanchao
