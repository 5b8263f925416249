// 自选股: the watchlist with its latest quotes, table zixuangu joined with the code table dmb of
// the main store. Failed statements raise StoreError.
#pragma once

#include <QString>

#include "grid/result_grid.h"
#include "platform/dialogs.h"
#include "store/stores.h"

namespace guanchao {

class Watchlist {
public:
    Watchlist(const Stores& stores, Dialogs& dialogs);

    // Fills the grid, the best gain first. A code that the code table lacks is not listed.
    void list(ResultGrid& grid) const;

    // Asks for a code and adds it, known or not; true if it was added.
    QCoro::Task<bool> addTyped(std::stop_token stop);

    // False if the code is there already.
    bool add(const QString& dm, const QString& jc);
    void remove(const QString& dm, const QString& jc);

private:
    const Stores& stores_;
    Dialogs& dialogs_;
};

}  // namespace guanchao
