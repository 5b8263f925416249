// 自选股: the watchlist with its latest quotes, table zixuangu joined with the code table dmb of
// the main store, and the further lists beside it (watch_tables). Failed statements raise
// StoreError.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "grid/result_grid.h"
#include "platform/dialogs.h"
#include "store/removals.h"
#include "store/stores.h"

namespace guanchao {

// Of the deletions from all lists, wherever they are made.
inline const QString watchlistPlace = QStringLiteral("自选股");

// Where the grid of a list has them.
struct WatchColumn {
    static constexpr int dm = 1;
    static constexpr int jc = 2;
    static constexpr int time = 11;
    static constexpr int monitor = 12;
    static constexpr int note = 13;
};

class Watchlist {
public:
    Watchlist(const Stores& stores, Dialogs& dialogs, Removals& removals);

    // Fills the grid, in the list's own order if it has one, else the best gain first; further
    // lists in the order of their stocks' coming. A code that the code table lacks is not listed.
    // True if it is the own order.
    bool list(ResultGrid& grid, const QString& list = {});

    // Asks for a code and adds it, known or not; true if it was added.
    QCoro::Task<bool> addTyped(std::stop_token stop, QString list);

    // False if the code is there already.
    bool add(const QString& dm, const QString& jc, const QString& list = {});

    // Can be taken back. `remove` tells it, `removeAll` leaves that to the line of the window.
    void remove(const QString& dm, const QString& jc, const QString& list = {});
    void removeAll(const QStringList& dms, const QString& list);

private:
    void removeRows(const QStringList& dms, const QString& words, const QString& list);

    const Stores& stores_;
    Dialogs& dialogs_;
    Removals& removals_;
    std::optional<QString> shown_;  // the list that the grid holds
};

}  // namespace guanchao
