#include "research/day_cache.h"

#include <QScopedValueRollback>

#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// No date if the code has no row.
QDate dayOf(Connection& store, const QString& query) {
    const Recordset result(store, query);
    return QDate::fromString(result.value(0).toText().left(10), Qt::ISODate);
}

}  // namespace

DayCache::DayCache(Globals& globals, const Clock& clock, DayHistory history, AskedHistory& asked,
                   CancellableRun& run)
    : globals_(globals), clock_(clock), history_(std::move(history)), asked_(asked), run_(run) {}

void DayCache::update(Connection& store, const QString& dm, const QDate& first, const QDate& last) {
    const QDate today = clock_.now().date();
    const bool knowsStart = asked_.reachesBackTo(dm, first);
    const bool knowsEnd = asked_.reachesTo(dm, last, today);
    const QString rows = u"  FROM geguhq where dm='"_s + dm + u"'"_s;
    const QDate newest = dayOf(store, u"select  max(datetime(riqi)) as maxrq"_s + rows);
    if (!newest.isValid()) {
        if (!(knowsStart && knowsEnd) && download(store, dm, first, last)) {
            asked_.noteRange(dm, first, last, today);
            run_.letEventsHappen();
        }
        return;
    }
    const QDate oldest = dayOf(store, u"select  min(datetime(riqi)) as minrq"_s + rows);
    if (first < oldest && !knowsStart && download(store, dm, first, oldest.addDays(-1))) {
        asked_.noteStart(dm, first);
        run_.letEventsHappen();
    }
    // From the newest day itself: it is the base of the next one's gain and not stored again.
    if (newest < last && !knowsEnd && download(store, dm, newest, last)) {
        asked_.noteEnd(dm, last, today);
        run_.letEventsHappen();
    }
}

bool DayCache::download(Connection& store, const QString& dm, const QDate& first,
                        const QDate& last) {
    const std::optional<QList<HistoryDay>> days = history_.fetch(dm, first, last);
    if (days && !days->isEmpty()) {
        write(store, dm, *days);
    }
    return days.has_value();
}

void DayCache::write(Connection& store, const QString& dm, const QList<HistoryDay>& days) {
    const QScopedValueRollback busy(globals_.hqmang, qint16(1));
    Transaction transaction(store);
    double formerClose = 0;
    for (const HistoryDay& day : days) {
        if (formerClose != 0) {
            const double gain = roundTo((day.close - formerClose) / formerClose * 100, 2);
            store.execute(u"insert into geguhq(dm,riqi,zhangfu,sp) values('"_s + dm + u"','"_s +
                          timeText(day.day) + u"',"_s + numberText(gain) + u",'"_s + day.closeText +
                          u"')"_s);
        }
        formerClose = day.close;
    }
    transaction.commit();
}

}  // namespace guanchao
