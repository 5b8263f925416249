// Stores at the size of the whole market, made once for all benches of a run.
#pragma once

#include <QTemporaryDir>

#include "store/stores.h"
#include "tools/market_scale/market_scale.h"

namespace guanchao {

inline const Stores& wholeMarket() {
    static const QTemporaryDir folder;
    static const Stores stores = [] {
        makeMarketScale(folder.path(), {});
        return storesIn(applicationFolder(folder.path()));
    }();
    return stores;
}

}  // namespace guanchao
