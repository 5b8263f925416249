#include "research/history_state.h"

#include <QFileInfo>
#include <QSet>
#include <algorithm>

#include "base/values.h"
#include "services/stock_code.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QDate dayIn(const Recordset& rows, int field) {
    return QDate::fromString(rows.value(field).toText(), Qt::ISODate);
}

QList<Neighbour> neighbours(Connection& history, const QString& dm, const QString& condition) {
    QList<Neighbour> days;
    for (Recordset rows(history,
                        u"select date(shijian),ifnull(sp,0),ifnull(nullif(fuquanyz,0),1) from "_s +
                            dm + condition);
         !rows.atEnd(); rows.moveNext()) {
        days << Neighbour{dayIn(rows, 0),
                          static_cast<qint64>(roundToWhole(rows.value(1).toNumber())),
                          rows.value(2).toNumber()};
    }
    return days;
}

// Of days with one factor the first and the last.
QList<Neighbour> endsOfFactors(const QList<Neighbour>& days) {
    QList<Neighbour> kept;
    for (qsizetype at = 0; at < days.size(); ++at) {
        const bool isWithin = at > 0 && at + 1 < days.size() &&
                              days[at - 1].factor == days[at].factor &&
                              days[at + 1].factor == days[at].factor;
        if (!isWithin) {
            kept << days[at];
        }
    }
    return kept;
}

// The tables and ranges of one file.
class File {
public:
    File(const QString& path, const QDate& today)
        : connection_(path, {}),
          tables_(tablesOf(connection_)),
          asked_(askedRanges(connection_)),
          today_(today),
          untilToday_(u"date(shijian)<="_s + quoted(dateText(today))) {}

    StoredDays stored(const QString& dm) {
        StoredDays stored;
        const AskedRange asked = asked_.value(dm);
        qint64 ofAsked = 0;
        if (tables_.contains(dm)) {
            // Each is read from the index; min, max and count together would work out every date.
            const QString all = u" from "_s + dm + u" where date(shijian)>"_s;
            const QString days = all + u"'' and "_s + untilToday_;
            const QString inOrder = u"select date(shijian)"_s + days + u" order by date(shijian)"_s;
            const QString count = u"(select count(*)"_s;
            const Recordset row(
                connection_, u"select ("_s + inOrder + u" limit 1),("_s + inOrder +
                                 u" desc limit 1),"_s + count + days + u"),"_s + count + all +
                                 quoted(dateText(asked.days.isNull() ? today_ : asked.days.last)) +
                                 u" and "_s + untilToday_ + u')');
            stored.first = dayIn(row, 0);
            stored.last = dayIn(row, 1);
            stored.count = static_cast<int>(row.value(2).toInteger());
            ofAsked = stored.count - row.value(3).toInteger();
        }
        stored.askedForFactors = asked.withFactors;
        if (ofAsked >= asked.stored) {
            stored.asked = asked.days;
        }
        return stored;
    }

    int gaps(const QString& dm, const StoredDays& stored, const QList<QDate>& marketDays) {
        const auto first = std::ranges::lower_bound(marketDays, stored.first);
        const auto unasked = std::count_if(
            first, marketDays.end(), [&](const QDate& day) { return !stored.asked.holds(day); });
        if (stored.count == 0 || unasked == 0) {
            return 0;
        }
        const QString outside =
            stored.asked.isNull()
                ? QString()
                : u" and (date(shijian)<"_s + quoted(dateText(stored.asked.first)) +
                      u" or date(shijian)>"_s + quoted(dateText(stored.asked.last)) + u')';
        const Recordset row(connection_,
                            u"select count(*) from "_s + dm + u" where "_s + untilToday_ + outside);
        return std::max(0, static_cast<int>(unasked - row.value(0).toInteger()));
    }

    QList<Neighbour> daysOfIndex() {
        return tables_.contains(leadingIndex)
                   ? neighbours(connection_, leadingIndex,
                                u" where "_s + untilToday_ + u" order by date(shijian)"_s)
                   : QList<Neighbour>();
    }

private:
    Connection connection_;
    QSet<QString> tables_;
    QMap<QString, AskedRange> asked_;
    QDate today_;
    QString untilToday_;
};

// A second file is only behind where the first has more.
bool isBehind(const StoredDays& second, const StoredDays& first) {
    return second.count < first.count || second.last < first.last || second.asked != first.asked ||
           second.askedForFactors != first.askedForFactors;
}

}  // namespace

HistoryState readHistoryState(const HistoryFiles& files, const QStringList& codes,
                              const QDate& today, const BetweenCodes& between) {
    HistoryState state;
    state.bytes = QFileInfo(files.first).size() + QFileInfo(files.second).size();
    if (!QFileInfo::exists(files.first)) {
        return state;
    }
    File first(files.first, today);
    std::optional<File> second;
    if (QFileInfo::exists(files.second)) {
        second.emplace(files.second, today);
    }
    const QList<Neighbour> index = first.daysOfIndex();
    for (const Neighbour& day : index) {
        state.marketDays << day.day;
    }
    state.ofIndex = endsOfFactors(index);
    for (const QString& dm : codes) {
        between();
        StoredDays stored = first.stored(dm);
        stored.gaps = first.gaps(dm, stored, state.marketDays);
        state.codes[dm] = stored;
        if (isBehind(second ? second->stored(dm) : StoredDays(), stored)) {
            state.behind << dm;
        }
    }
    return state;
}

std::optional<CodeGap> factorGapOf(Connection& history, const QString& dm,
                                   const StoredDays& stored) {
    if (stored.count == 0 || stored.askedForFactors || !isWithoutFactors(history, dm)) {
        return std::nullopt;
    }
    return CodeGap{dm, {}, {}, 0, {}};
}

std::optional<Neighbour> neighbourBefore(Connection& history, const QString& dm, const QDate& day) {
    const QList<Neighbour> last = neighbours(history, dm,
                                             u" where date(shijian)<"_s + quoted(dateText(day)) +
                                                 u" order by date(shijian) desc limit 1"_s);
    return last.isEmpty() ? std::nullopt : std::optional(last.first());
}

DayRange joined(const DayRange& asked, const DayRange& then) {
    const bool areApart =
        asked.isNull() || asked.last.addDays(1) < then.first || then.last.addDays(1) < asked.first;
    return areApart ? then
                    : DayRange{std::min(asked.first, then.first), std::max(asked.last, then.last)};
}

std::optional<CodeGap> gapOf(Connection& history, const QString& dm, const StoredDays& stored,
                             const QList<QDate>& marketDays, const DayRange& wanted) {
    QList<QDate> missing;
    std::ranges::copy_if(marketDays, std::back_inserter(missing), [&](const QDate& day) {
        return wanted.holds(day) && !stored.asked.holds(day);
    });
    QList<Neighbour> there;
    if (!missing.isEmpty() && stored.count > 0) {
        there = neighbours(history, dm,
                           u" where date(shijian)>=ifnull((select date(shijian) from "_s + dm +
                               u" where date(shijian)<"_s + quoted(dateText(missing.first())) +
                               u" order by date(shijian) desc limit 1),'') and date(shijian)<="_s +
                               quoted(dateText(wanted.last)) + u" order by date(shijian)"_s);
        QSet<QDate> known;
        for (const Neighbour& day : std::as_const(there)) {
            known << day.day;
        }
        missing.removeIf([&](const QDate& day) { return known.contains(day); });
    }
    if (missing.isEmpty()) {
        return std::nullopt;
    }
    const DayRange days = {missing.first(), missing.last()};
    return CodeGap{dm, days, joined(stored.asked, wanted), static_cast<int>(missing.size()),
                   endsOfFactors(there)};
}

}  // namespace guanchao
