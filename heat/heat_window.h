// What the windows of the internet figures share: the grid of a ranking with its search, and the
// grid with the history of one item. A click on a header sorts either.
#pragma once

#include <QDialog>
#include <QSignalBlocker>

#include "grid/grid_view.h"
#include "grid/result_grid.h"
#include "store/stores.h"

namespace guanchao {

class HeatWindow : public QDialog {
    Q_OBJECT

protected:
    HeatWindow() : QDialog(nullptr, Qt::Window) {}

    // `rankingHint` is shown where the ranking is empty.
    void showGrids(GridView& ranking, const QString& rankingHint, GridView& history);
    // Marks the first row of the ranking that holds the text and scrolls to it.
    void find(const QString& text);
    // A setting that is shown writes itself back, which a run that holds the store refuses. What is
    // stored already can go without: then the box tells of no change while the blocker lives.
    static QSignalBlocker quietIfHeld(QObject* box, const StoreFile& heat);

    ResultGrid rankingGrid_;
    ResultGrid historyGrid_;

private:
    GridView* ranking_ = nullptr;
    SortCode lastSortCode_ = SortCode::none;
};

}  // namespace guanchao
