#include "heat/heat_ranking.h"

#include <utility>

#include "base/activity.h"
#include "base/values.h"

namespace guanchao {

HeatRanking::HeatRanking(const Stores& stores, Globals& globals, const Clock& clock, Shell& shell,
                         HeatSubject subject, ResultGrid& ranking, ResultGrid& history)
    : stores_(stores),
      globals_(globals),
      clock_(clock),
      shell_(shell),
      subject_(std::move(subject)),
      ranking_(ranking),
      history_(history) {
    ranking_.setKeyColumns({heatItemColumn});
}

void HeatRanking::showRanking(bool all) {
    const Activity activity(subject_.rankingActivity);
    showsAll_ = all;
    Connection store = stores_.heat.open();
    readRanking(store, subject_, shown(), ranking_);
}

bool HeatRanking::choose(int row) {
    if (!ranking_.isDataRow(row)) {
        return false;
    }
    setCurrent(ranking_.textMatrix(row, heatItemColumn));
    if (subject_.lastColumnIsTip) {
        ranking_.setToolTipText(trimBlanks(ranking_.textMatrix(row, ranking_.cols() - 1)));
    }
    return true;
}

std::optional<int> HeatRanking::chooseItem(const QString& item) {
    const std::optional<int> row = rowOf(item);
    if (row) {
        ranking_.biaoji(*row);
        choose(*row);
    } else {
        ranking_.unmark();
        setCurrent(item);
    }
    return row;
}

void HeatRanking::setCurrent(const QString& item) {
    chosen_ = item;
    globals_.*subject_.current = trimBlanks(item);
    emptyHistory();
}

std::optional<int> HeatRanking::rowOf(const QString& item) const {
    for (int row = 1; row < ranking_.rows() && ranking_.isDataRow(row); ++row) {
        if (ranking_.textMatrix(row, heatItemColumn) == item) {
            return row;
        }
    }
    return std::nullopt;
}

void HeatRanking::emptyHistory() {
    historyItem_.clear();
    emptyHeatGrid(history_);
}

QList<DayValues> HeatRanking::showHistory() {
    const Activity activity(subject_.historyActivity);
    Connection store = stores_.heat.open();
    QList<DayValues> days = readHistory(store, subject_, current(), history_);
    historyItem_ = current();
    return days;
}

HeatQuestion HeatRanking::shown() const {
    return {showsAll_, dateText(clock_.now().date()), historyItem_};
}

bool HeatRanking::showAnew(HeatReading& reading) {
    if (reading.question != shown()) {
        return false;
    }
    {
        const GridFill fill(ranking_, GridFill::Rows::ofTheSameList);
        ranking_.swapTable(reading.ranking);
    }
    markAgain();
    if (!historyItem_.isEmpty()) {
        const GridFill fill(history_, GridFill::Rows::ofTheSameList);
        history_.swapTable(reading.history);
    }
    return true;
}

// On a new day the item's row is missing until it has been collected.
void HeatRanking::markAgain() {
    const std::optional<int> row = rowOf(chosen_);
    if (row && ranking_.markedRow() == 0) {
        ranking_.biaoji(*row);
    }
}

void HeatRanking::openSearchPage(const QString& searchTemplate) {
    shell_.open(searchPage(searchTemplate, wordsOf(current())));
}

}  // namespace guanchao
