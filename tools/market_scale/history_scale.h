// Both history databases at the size of the whole market, made up from a fixed seed: trading days
// behind 2017-04-06 on which now and then a theme has many stocks at their limit.
#pragma once

#include "store/stores.h"

namespace guanchao {

struct HistoryScale {
    int stocks = 2500;
    int days = 500;
    int themes = 300;
    int memberships = 12000;
};

// Makes both files, which must not be there. Codes and themes are those of the main store that
// makeMarketScale makes. Raises StoreError.
void makeHistoryScale(const StoreFile& first, const StoreFile& second, const HistoryScale& scale,
                      bool indexed);

}  // namespace guanchao
