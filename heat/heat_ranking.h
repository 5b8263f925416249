// A ranking of the internet figures that the collector has counted: the items of a day, the history
// of one of them, and its search page. What it is about, and in which tables of the heat store it
// stands, is a HeatSubject. Failed statements raise StoreError.
#pragma once

#include <optional>

#include "base/day_values.h"
#include "base/globals.h"
#include "grid/result_grid.h"
#include "heat/heat_reading.h"
#include "heat/url_encode.h"
#include "platform/clock.h"
#include "platform/shell.h"
#include "store/stores.h"

namespace guanchao {

class HeatRanking {
public:
    HeatRanking(const Stores& stores, Globals& globals, const Clock& clock, Shell& shell,
                HeatSubject subject, ResultGrid& ranking, ResultGrid& history);

    const HeatSubject& subject() const { return subject_; }
    const QString& current() const { return globals_.*subject_.current; }

    // The items of the latest day, or every item there is.
    void showRanking(bool all);

    // A row is chosen: its item becomes the current one and the second grid is emptied; false on a
    // row without data.
    bool choose(int row);
    // The same for an item, wherever it stands: its row is marked and given, if it has one.
    std::optional<int> chooseItem(const QString& item);
    // Fills the second grid with the current item's history and returns it for the plot.
    QList<DayValues> showHistory();
    void emptyHistory();

    // What is shown, to be read anew.
    HeatQuestion shown() const;
    // Both grids as they are now; marks, selections and orders stay. False if something else is
    // shown meanwhile.
    bool showAnew(HeatReading& reading);

    // The words that the item is searched by.
    QString wordsOf(const QString& item) const { return subject_.searchWords(withoutMarks(item)); }

    // Opens the current item's search page in the system's browser.
    void openSearchPage(const QString& searchTemplate);

private:
    void setCurrent(const QString& item);
    std::optional<int> rowOf(const QString& item) const;
    void markAgain();

    const Stores& stores_;
    Globals& globals_;
    const Clock& clock_;
    Shell& shell_;
    HeatSubject subject_;
    ResultGrid& ranking_;
    ResultGrid& history_;
    bool showsAll_ = false;
    QString chosen_;       // the item of the row that was chosen last
    QString historyItem_;  // whose history is shown
};

}  // namespace guanchao
