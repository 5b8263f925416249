#include "heat/heat_window.h"

#include "grid/sorting.h"
#include "heat/heat_grid.h"
#include "store/held_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

void HeatWindow::showGrids(GridView& ranking, const QString& rankingHint, GridView& history) {
    ranking_ = &ranking;
    ranking.setGrid(rankingGrid_);
    ranking.setHint(rankingHint);
    history.setGrid(historyGrid_);
    history.setHint(u"点排名中的一行，这里列出它的历史"_s);
    connect(&ranking, &GridView::gridClicked, this, [this](int row, int col) {
        sortOnHeaderClick(rankingGrid_, row, col, {u"日期"_s}, lastSortCode_);
    });
    connect(&history, &GridView::gridClicked, this, [this](int row, int col) {
        sortOnHeaderClick(historyGrid_, row, col, {u"日期"_s}, lastSortCode_);
    });
}

void HeatWindow::find(const QString& text) {
    if (const std::optional<int> row = findHeatRow(rankingGrid_, text)) {
        biaoji(rankingGrid_, *row);
        ranking_->scrollToTop(*row);
    }
}

QSignalBlocker HeatWindow::quietIfHeld(QObject* box, const StoreFile& heat) {
    return QSignalBlocker(activityHolding(heat.path) ? box : nullptr);
}

}  // namespace guanchao
