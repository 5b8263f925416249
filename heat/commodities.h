// The prices of commodities by the words of the web: the ranking of the list, the history of one
// commodity, its search page and its end. Tables shopname and shophq of the heat store, which the
// collector fills. Failed statements raise StoreError.
#pragma once

#include <optional>

#include "base/day_values.h"
#include "base/globals.h"
#include "grid/result_grid.h"
#include "platform/clock.h"
#include "platform/shell.h"
#include "store/stores.h"

namespace guanchao {

class Commodities {
public:
    Commodities(const Stores& stores, Globals& globals, const Clock& clock, Shell& shell,
                ResultGrid& ranking, ResultGrid& history);

    const QString& current() const { return globals_.dangqianshangpin; }

    // Keeps the search page's template and returns the attention limit; nothing without a row.
    std::optional<QString> readSettings();

    // The commodities collected on the latest day, today if there is none, by their total; or all.
    void showRanking(bool all);

    // A press on a row: its commodity becomes the current one, its stocks the grid's tool tip, and
    // the second grid is emptied; false on a row without data.
    bool choose(int row);
    // Fills the second grid with the current commodity's history and returns it for the plot.
    QList<DayValues> showHistory();

    // Opens the page from which the collector counts the current commodity.
    void openSearchPage();

private:
    const Stores& stores_;
    Globals& globals_;
    const Clock& clock_;
    Shell& shell_;
    ResultGrid& ranking_;
    ResultGrid& history_;
    QString searchTemplate_;
};

}  // namespace guanchao
