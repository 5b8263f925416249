#include "heat/heat_ranking.h"

#include <utility>

#include "base/activity.h"
#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

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
    Connection store = stores_.heat.open();
    const Recordset latest(store, u"select date(riqi) as riqi from "_s + subject_.dayTable +
                                      u" order by datetime(riqi) desc limit 1"_s);
    const GridFill fill(ranking_);
    emptyHeatGrid(ranking_);
    if (latest.atEnd() && !subject_.ranksToday) {
        return;
    }
    const QString day =
        latest.atEnd() ? dateText(clock_.now().date()) : latest.value(u"riqi").toText();
    const QString first = subject_.noteKey.isEmpty()
                              ? QString()
                              : incomparableLast(store, subject_.dayTable, subject_.noteKey);
    Recordset items(store, all ? subject_.ofAll : subject_.ofDay(day, first));
    fillHeatGrid(items, ranking_, subject_.rankingWidths, subject_.dressRanking);
    showNotes(ranking_,
              notes(store, all ? latestNotes(subject_.dayTable) : u" and riqi="_s + quoted(day)));
}

NewsNotes HeatRanking::notes(Connection& store, const QString& condition) const {
    return subject_.noteKey.isEmpty() ? NewsNotes()
                                      : readNewsNotes(store, subject_.dayTable, condition);
}

QString HeatRanking::chosenDay() const {
    const int row = ranking_.markedRow();
    return ranking_.isDataRow(row) ? ranking_.textMatrix(row, heatDayColumn) : QString();
}

bool HeatRanking::choose(int row) {
    if (!ranking_.isDataRow(row)) {
        return false;
    }
    globals_.*subject_.current = trimBlanks(ranking_.textMatrix(row, heatItemColumn));
    if (subject_.lastColumnIsTip) {
        ranking_.setToolTipText(trimBlanks(ranking_.textMatrix(row, ranking_.cols() - 1)));
    }
    emptyHeatGrid(history_);
    return true;
}

QList<DayValues> HeatRanking::showHistory() {
    const Activity activity(subject_.historyActivity);
    Connection store = stores_.heat.open();
    Recordset days(store, subject_.ofItem(current()));
    fillHeatGrid(days, history_, subject_.historyWidths, subject_.dressHistory);
    const NewsNotes ofItem = notes(store, u" and item="_s + quoted(current()));
    showNotes(history_, ofItem);
    return dayValues(days, subject_.lines, ofItem);
}

void HeatRanking::openSearchPage(const QString& searchTemplate) {
    shell_.open(searchPage(searchTemplate, currentWords()));
}

}  // namespace guanchao
