// Themes, or companies, by how much news the internet carries about them: the ranking of a day, the
// history of one item, and its search page. Tables xinwenshul and gongsixinwen of the heat store,
// which the collector fills; growth is a signed number, 1000 where there was nothing to compare
// with. Failed statements raise StoreError.
#pragma once

#include "base/day_values.h"
#include "base/globals.h"
#include "grid/result_grid.h"
#include "platform/shell.h"
#include "store/stores.h"

namespace guanchao {

// What a ranking is about.
struct NewsSubject {
    QString table;
    QString key;         // the column that names an item
    QString keyColumns;  // what the grids show of an item, as words of the statement
    QString Globals::*current;
    bool searchesNumber;  // of a code, only its last six characters are searched for
    QList<int> widths;
};

NewsSubject themeNews();
NewsSubject companyNews();

class NewsRanking {
public:
    NewsRanking(const Stores& stores, Globals& globals, Shell& shell, NewsSubject subject,
                ResultGrid& ranking, ResultGrid& history);

    const QString& current() const { return globals_.*subject_.current; }

    // The latest day's items by their growth, or every item there is.
    void showRanking(bool all);

    // A press on a row: its item becomes the current one and the second grid is emptied; false on a
    // row without data.
    bool choose(int row);
    // Fills the second grid with the current item's history and returns it for the plot.
    QList<DayValues> showHistory();

    // Opens the current item's search page in the system's browser.
    void openSearchPage(const QString& searchTemplate);

private:
    QString columns() const;
    QString rowsOf(const QString& day) const;
    QString lastRows() const;

    const Stores& stores_;
    Globals& globals_;
    Shell& shell_;
    NewsSubject subject_;
    ResultGrid& ranking_;
    ResultGrid& history_;
};

}  // namespace guanchao
