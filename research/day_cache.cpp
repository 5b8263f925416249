#include "research/day_cache.h"

#include <QScopedValueRollback>
#include <deque>

#include "base/values.h"
#include "store/patience.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QDate dayOf(Connection& store, const QString& query) {
    const Recordset result(store, query);
    return QDate::fromString(result.value(0).toText().left(10), Qt::ISODate);
}

}  // namespace

Activity comparing() {
    return Activity(
        u"对比主题与大盘的历史涨幅"_s,
        u"已经下载的历史行情保留在库里；对比表要么是完整的新结果，要么还是上一次的。"_s);
}

CachedDays cachedDays(Connection& store, const QString& dm) {
    const QString rows = u"  FROM geguhq where dm="_s + quoted(dm);
    CachedDays days = {dm, {}, dayOf(store, u"select  max(datetime(riqi)) as maxrq"_s + rows)};
    if (days.newest.isValid()) {
        days.oldest = dayOf(store, u"select  min(datetime(riqi)) as minrq"_s + rows);
    }
    return days;
}

DayCache::DayCache(const Stores& stores, Globals& globals, const Clock& clock, DayHistory history,
                   AskedHistory& asked)
    : stores_(stores),
      globals_(globals),
      clock_(clock),
      history_(std::move(history)),
      asked_(asked) {}

void DayCache::addGaps(const CachedDays& code, const QDate& first, const QDate& last,
                       QList<Gap>& gaps) {
    const QString& dm = code.dm;
    const QDate today = clock_.now().date();
    const bool knowsStart = asked_.reachesBackTo(dm, first);
    const bool knowsEnd = asked_.reachesTo(dm, last, today);
    if (!code.newest.isValid()) {
        if (!(knowsStart && knowsEnd)) {
            gaps << Gap{dm, first, last, [=, this] { asked_.noteRange(dm, first, last, today); }};
        }
        return;
    }
    if (first < code.oldest && !knowsStart) {
        gaps << Gap{dm, first, code.oldest.addDays(-1), [=, this] { asked_.noteStart(dm, first); }};
    }
    // From the newest day itself: it is the base of the next one's gain and not stored again.
    if (code.newest < last && !knowsEnd) {
        gaps << Gap{dm, code.newest, last, [=, this] { asked_.noteEnd(dm, last, today); }};
    }
}

// A service that refuses is asked for one code at a time from then on.
QCoro::Task<> DayCache::update(QList<CachedDays> codes, QDate first, QDate last, Show show,
                               std::stop_token stop) {
    QList<Gap> gaps;
    for (const CachedDays& code : codes) {
        addGaps(code, first, last, gaps);
    }
    qsizetype ahead = history_.ahead();
    qsizetype asked = 0;
    std::deque<QCoro::Task<HistoryReply>> onTheirWay;
    for (qsizetype done = 0; done < gaps.size(); ++done) {
        const Gap& gap = gaps[done];
        show(gap.dm, static_cast<int>(done), static_cast<int>(gaps.size()));
        for (; asked < gaps.size() && std::ssize(onTheirWay) < ahead; ++asked) {
            const Gap& next = gaps[asked];
            onTheirWay.push_back(history_.fetch(next.dm, next.first, next.last, stop));
        }
        const HistoryReply reply = co_await std::move(onTheirWay.front());
        onTheirWay.pop_front();
        ahead = reply.refused ? 1 : ahead;
        if (reply.days) {
            co_await write(gap.dm, *reply.days, stop);
            gap.note();
        }
    }
}

QCoro::Task<> DayCache::write(QString dm, QList<HistoryDay> days, std::stop_token stop) {
    if (!days.isEmpty()) {
        const auto step = [=, this] { writeRows(dm, days); };
        co_await patiently(step, stop);
    }
}

void DayCache::writeRows(const QString& dm, const QList<HistoryDay>& days) {
    const Activity activity = comparing();
    const QScopedValueRollback busy(globals_.hqmang, qint16(1));
    Connection store = stores_.main.open();
    Transaction transaction(store);
    double formerClose = 0;
    for (const HistoryDay& day : days) {
        if (formerClose != 0) {
            const double gain = roundTo((day.close - formerClose) / formerClose * 100, 2);
            store.execute(u"insert into geguhq(dm,riqi,zhangfu,sp) values("_s + quoted(dm) + u',' +
                          quoted(timeText(day.day)) + u',' + numberText(gain) + u',' +
                          quoted(day.closeText) + u")"_s);
        }
        formerClose = day.close;
    }
    transaction.commit();
}

}  // namespace guanchao
