#include "research/day_cache.h"

#include <QScopedValueRollback>
#include <deque>

#include "base/values.h"
#include "services/stock_code.h"
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

DayCache::DayCache(const Stores& stores, Globals& globals, const Clock& clock, PastPrices prices,
                   AskedHistory& asked)
    : stores_(stores),
      globals_(globals),
      clock_(clock),
      prices_(std::move(prices)),
      asked_(asked) {}

void DayCache::addGaps(const CachedDays& code, const QDate& first, const QDate& last,
                       QList<Gap>& gaps) {
    const QString& dm = code.dm;
    const QDateTime now = clock_.now();
    asked_.seeRows(dm, code.oldest, code.newest);
    const bool knowsStart = asked_.reachesBackTo(dm, first);
    const bool knowsEnd = asked_.reachesTo(dm, last, now);
    if (!code.newest.isValid()) {
        if (!(knowsStart && knowsEnd)) {
            gaps << Gap{dm, first, last, [=, this] { asked_.noteRange(dm, first, last, now); }};
        }
        return;
    }
    if (first < code.oldest && !knowsStart) {
        gaps << Gap{dm, first, code.oldest.addDays(-1), [=, this] { asked_.noteStart(dm, first); }};
    }
    // From the newest day itself: it is the base of the next one's gain and not stored again.
    if (code.newest < last && !knowsEnd) {
        gaps << Gap{dm, code.newest, last, [=, this] { asked_.noteEnd(dm, last, now); }};
    }
}

// A service that refuses is asked for one code at a time from then on.
QCoro::Task<MissedDays> DayCache::update(QList<CachedDays> codes, QDate first, QDate last,
                                         Show show, std::stop_token stop) {
    QList<Gap> gaps;
    for (const CachedDays& code : codes) {
        addGaps(code, first, last, gaps);
    }
    MissedDays missed;
    qsizetype ahead = prices_.bars.ahead();
    qsizetype asked = 0;
    std::deque<QCoro::Task<Fetched>> onTheirWay;
    for (qsizetype done = 0; done < gaps.size(); ++done) {
        const Gap& gap = gaps[done];
        show(gap.dm, static_cast<int>(done), static_cast<int>(gaps.size()));
        for (; asked < gaps.size() && std::ssize(onTheirWay) < ahead; ++asked) {
            onTheirWay.push_back(fetch(gaps[asked], stop));
        }
        const Fetched fetched = co_await std::move(onTheirWay.front());
        onTheirWay.pop_front();
        ahead = fetched.reply.turnedAway ? 1 : ahead;
        if (fetched.reply.days) {
            co_await write(gap.dm, fetched, stop);
            gap.note();
        } else {
            missed.reason = missed.codes.isEmpty() ? fetched.lack : missed.reason;
            missed.codes << gap.dm;
        }
    }
    co_return missed;
}

// An index and a fund have no factors. Where those of a stock can't be had its days wait for
// another time: a row is never written again, and a gain over a dividend would be wrong in it for
// good.
QCoro::Task<DayCache::Fetched> DayCache::fetch(Gap gap, std::stop_token stop) const {
    Fetched fetched;
    fetched.reply = co_await prices_.bars.fetch(gap.dm, gap.first, gap.last, stop);
    fetched.lack = fetched.reply.lacks.join(u'；');
    const bool hasGains = fetched.reply.days && fetched.reply.days->size() > 1;
    if (hasGains && fetched.reply.kind == pricesWithFactors && isStockCode(gap.dm)) {
        const std::optional<FactorList> factors = co_await prices_.factors.fetch(gap.dm, stop);
        fetched.factors = factors.value_or(FactorList());
        if (!factors && prices_.factors.isNamed()) {
            fetched.reply.days.reset();
            fetched.lack = u"复权因子没有取到"_s;
        }
    }
    co_return fetched;
}

QCoro::Task<> DayCache::write(QString dm, Fetched fetched, std::stop_token stop) {
    if (fetched.reply.days->isEmpty()) {
        co_return;
    }
    const auto step = [=, this] { return writeRows(dm, fetched); };
    const QList<QDate> days = co_await patiently(step, stop);
    if (!days.isEmpty()) {
        asked_.noteRows(dm, days.first(), days.last());
    }
}

QList<QDate> DayCache::writeRows(const QString& dm, const Fetched& fetched) {
    const Activity activity = comparing();
    const QScopedValueRollback busy(globals_.hqmang, qint16(1));
    Connection store = stores_.main.open();
    Transaction transaction(store);
    QList<QDate> days;
    double formerClose = 0;
    for (const DayBar& bar : *fetched.reply.days) {
        const double close = bar.close * fetched.factors.on(bar.day);
        if (formerClose != 0) {
            const double gain = roundTo((close - formerClose) / formerClose * 100, 2);
            store.execute(u"insert into geguhq(dm,riqi,zhangfu,sp) values("_s + quoted(dm) + u',' +
                          quoted(timeText(bar.day)) + u',' + numberText(gain) + u',' +
                          quoted(bar.closeText) + u")"_s);
            days << bar.day;
        }
        formerClose = close;
    }
    transaction.commit();
    return days;
}

}  // namespace guanchao
