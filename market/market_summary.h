// The whole market in a line: the indexes of the code table, how many stocks rise and fall, how
// many stand at their limits, and what was turned over. Everything is read from the main store's
// quotes of last time; failed statements raise StoreError.
#pragma once

#include <QList>
#include <QString>

#include "store/connection.h"

namespace guanchao {

struct IndexQuote {
    QString name;
    double latest = 0;  // points
    double gain = 0;    // percent
};

struct MarketSummary {
    QList<IndexQuote> indexes;
    int rising = 0;
    int level = 0;
    int falling = 0;
    int atLimitUp = 0;
    int atLimitDown = 0;
    int suspended = 0;    // without a price
    double turnover = 0;  // yuan
};

// Delisted stocks are left out.
MarketSummary readMarketSummary(Connection& mainStore);

// Whether a stock that has come to its latest price by the change stands at its upper limit.
bool standsAtLimitUp(const QString& dm, const QString& jc, double latest, double change);

}  // namespace guanchao
