// Which columns of a grid's view are shown. Those that the user has hidden stay so in every later
// fill and run, known by their headers; of a table that has no others all are shown.
#pragma once

#include <QMenu>
#include <QSet>
#include <QStringList>
#include <QTableView>
#include <functional>

#include "grid/result_grid.h"

namespace guanchao {

class ColumnChoice {
public:
    explicit ColumnChoice(QTableView& view) : view_(view) {}

    void apply(const ResultGrid& grid);

    // In the order in which they are seen.
    QList<int> shown(const ResultGrid& grid) const;

    // An entry for each column, ticked where it is shown, of which the last one stays; and one that
    // shows them all. `changed` is called after each choice.
    void fillMenu(QMenu& menu, const ResultGrid& grid, const std::function<void()>& changed);

    QStringList kept() const;
    void setKept(const QStringList& hidden) { hidden_ = {hidden.begin(), hidden.end()}; }

private:
    QTableView& view_;
    QSet<QString> hidden_;
};

}  // namespace guanchao
