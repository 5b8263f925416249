#include "heat/heat_reading.h"

#include "base/activity.h"
#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

void readRanking(Connection& heat, const HeatSubject& subject, const HeatQuestion& question,
                 ResultGrid& ranking) {
    const Recordset latest(heat, u"select date(riqi) as riqi from "_s + subject.dayTable +
                                     u" order by datetime(riqi) desc limit 1"_s);
    const GridFill fill(ranking);
    emptyHeatGrid(ranking);
    if (latest.atEnd() && !subject.ranksToday) {
        return;
    }
    const QString day = latest.atEnd() ? question.today : latest.value(u"riqi").toText();
    const QString first = incomparableLast(heat, subject.dayTable, subject.key);
    Recordset items(heat, question.all ? subject.ofAll : subject.ofDay(day, first));
    fillHeatGrid(items, ranking, subject.rankingWidths, subject.dressRanking);
    showNotes(ranking, readNewsNotes(heat, subject.dayTable,
                                     question.all ? latestNotes(subject.dayTable)
                                                  : u" and riqi="_s + quoted(day)));
}

QList<DayValues> readHistory(Connection& heat, const HeatSubject& subject, const QString& item,
                             ResultGrid& history) {
    Recordset days(heat, subject.ofItem(item));
    fillHeatGrid(days, history, subject.historyWidths, subject.dressHistory);
    const NewsNotes notes = readNewsNotes(heat, subject.dayTable, u" and item="_s + quoted(item));
    showNotes(history, notes);
    return dayValues(days, subject.lines, notes);
}

std::shared_ptr<HeatReading> readHeat(const StoreFile& heat, const HeatSubject& subject,
                                      const HeatQuestion& question) {
    const Activity activity(subject.rankingActivity);
    const auto reading = std::make_shared<HeatReading>();
    reading->question = question;
    Connection store = heat.open();
    readRanking(store, subject, question, reading->ranking);
    if (!question.item.isEmpty()) {
        reading->historyDays = readHistory(store, subject, question.item, reading->history);
    }
    reading->lastDays = readHeatDays(store, subject, subject.fields.first(), sparklineDays);
    return reading;
}

}  // namespace guanchao
