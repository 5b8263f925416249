// A ranking of the internet figures that the collector has counted: the items of a day, the history
// of one of them, and its search page. What it is about, and in which tables of the heat store it
// stands, is a HeatSubject. Failed statements raise StoreError.
#pragma once

#include <functional>

#include "base/day_values.h"
#include "base/globals.h"
#include "grid/result_grid.h"
#include "heat/heat_grid.h"
#include "heat/url_encode.h"
#include "platform/clock.h"
#include "platform/shell.h"
#include "store/stores.h"

namespace guanchao {

struct HeatSubject {
    QString rankingActivity;
    QString historyActivity;
    QString collectWord;                  // the argument word of the collector
    QString Globals::*current = nullptr;  // the item that was chosen last
    QString dayTable;                     // the latest day in it is the ranking's
    QString noteKey = {};                 // its column of items, where its counts have notes
    bool ranksToday = false;              // while no day is collected, the ranking is today's

    // The statements of the ranking of a day, of all items, and of the history of one. `first`: an
    // order that goes before the subject's own, followed by a comma, or nothing.
    std::function<QString(const QString& day, const QString& first)> ofDay;
    QString ofAll;
    std::function<QString(const QString& item)> ofItem;

    QList<int> rankingWidths;
    QList<int> historyWidths;
    DressRow dressRanking;
    DressRow dressHistory;
    QList<CountLine> lines;                                   // of the plot of a history
    bool lastColumnIsTip = false;                             // of the row that is chosen
    std::function<QString(const QString& item)> searchWords;  // without marks
};

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
    // Fills the second grid with the current item's history and returns it for the plot.
    QList<DayValues> showHistory();

    // The words that the current item is searched by.
    QString currentWords() const { return subject_.searchWords(withoutMarks(current())); }
    // Date text; empty while no row is chosen.
    QString chosenDay() const;

    // Opens the current item's search page in the system's browser.
    void openSearchPage(const QString& searchTemplate);

private:
    NewsNotes notes(Connection& store, const QString& condition) const;

    const Stores& stores_;
    Globals& globals_;
    const Clock& clock_;
    Shell& shell_;
    HeatSubject subject_;
    ResultGrid& ranking_;
    ResultGrid& history_;
};

}  // namespace guanchao
