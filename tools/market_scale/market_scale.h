// Stores at the size of the whole market, made up from a fixed seed: what the benches measure on.
#pragma once

#include <QString>

namespace guanchao {

struct MarketScale {
    int stocks = 5400;
    int themes = 600;
    int memberships = 40000;
};

// Makes the main store of an application folder that has none, with quotes for every stock and the
// three indexes. Raises StoreError if a store is there or can't be written.
void makeMarketScale(const QString& folder, const MarketScale& scale);

// Writes its codes.csv and themes.csv into the folder, for a practice market of that size. Raises
// OperationError or StoreError.
void writeMarketLists(const QString& folder);

// The code of a stock and the name of a theme, by their numbers from 0.
QString marketCode(int stock);
QString marketTheme(int theme);

}  // namespace guanchao
