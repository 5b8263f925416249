// The days of a stock that this computer holds, whoever keeps them.
#pragma once

#include <QCoro/QCoroTask>
#include <QString>
#include <stop_token>

#include "base/candles.h"

namespace guanchao {

class StoredCandles {
public:
    virtual ~StoredCandles() = default;

    // Oldest first, with their factors; none of a stock that is not held. Raises OperationError.
    // `dm` with its exchange, in upper case.
    virtual QCoro::Task<QList<Candle>> of(QString dm, std::stop_token stop) const = 0;
};

}  // namespace guanchao
