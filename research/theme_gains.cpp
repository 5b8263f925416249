#include "research/theme_gains.h"

#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <algorithm>
#include <iterator>

#include "base/activity.h"
#include "base/values.h"
#include "services/stock_code.h"
#include "store/recordset.h"
#include "store/row_cursor.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int longestSpan = gainSpans[std::size(gainSpans) - 1];
constexpr int daysOfAHoliday = 10;

QStringList membersOf(const Stores& stores, const QString& theme) {
    Connection store = stores.main.open();
    RowCursor row(store, u"select dm from dzhzhuti where zhutiname="_s + quoted(theme));
    QStringList members;
    while (row.next()) {
        members << row.string(0);
    }
    return members;
}

// The last days of the index, the newest first.
QStringList lastDays(Connection& store, RangeSource source) {
    const QString days =
        source == RangeSource::history
            ? QString(u"select distinct date(shijian) as ri from "_s + leadingIndex)
            : u"select distinct date(riqi) as ri from geguhq where dm="_s + quoted(leadingIndex);
    RowCursor row(store, u"select ri from ("_s + days +
                             u") where ri is not null order by ri desc limit "_s +
                             QString::number(longestSpan));
    QStringList last;
    while (row.next()) {
        last << row.string(0);
    }
    return last;
}

QString gainsQuery(const QString& dm, const QString& first, RangeSource source) {
    if (source == RangeSource::history) {
        return u"select date(shijian),round((cast(sp as Double)/cast(qiansp as Double)-1)*100,2)"
               u" from geguhq where dm="_s +
               quoted(dm) + u" and date(shijian)>="_s + quoted(first);
    }
    return u"select distinct date(riqi),zhangfu from geguhq where dm="_s + quoted(dm) +
           u" and datetime(riqi)>=datetime("_s + quoted(first) + u')';
}

struct DayMean {
    double sum = 0;
    int rows = 0;
};

SpanGain gainOf(const QStringList& days, const QHash<QString, DayMean>& means, int span) {
    SpanGain of = {.days = span, .daysWithRows = 0};
    double sum = 0;
    for (const QString& day : days.first(std::min<qsizetype>(span, days.size()))) {
        const DayMean mean = means.value(day);
        if (mean.rows > 0) {
            sum += mean.sum / mean.rows;
            ++of.daysWithRows;
        }
    }
    if (days.size() >= span && of.daysWithRows > 0) {
        of.gain = sum;
    }
    return of;
}

ThemeGains readFrom(Connection& store, const QStringList& members, RangeSource source) {
    const QStringList days = lastDays(store, source);
    QHash<QString, DayMean> means;
    QSet<QString> withRows;
    for (const QString& dm : days.isEmpty() ? QStringList() : members) {
        RowCursor row(store, gainsQuery(dm, days.last(), source));
        while (row.next()) {
            if (!row.isNull(1)) {
                DayMean& mean = means[row.string(0)];
                mean.sum += row.number(1);
                ++mean.rows;
                withRows << dm;
            }
        }
    }
    ThemeGains gains;
    gains.source = source;
    gains.last = QDate::fromString(days.value(0), Qt::ISODate);
    gains.marketDays = static_cast<int>(days.size());
    gains.members = static_cast<int>(QSet<QString>(members.begin(), members.end()).size());
    gains.membersWithRows = static_cast<int>(withRows.size());
    for (const int span : gainSpans) {
        gains.spans << gainOf(days, means, span);
    }
    return gains;
}

}  // namespace

ThemeGains readThemeGains(const Stores& stores, const QString& theme) {
    const Activity activity(u"读取主题的历史涨幅"_s);
    const QStringList members = membersOf(stores, theme);
    if (QFileInfo::exists(stores.firstHistory.path)) {
        Connection history = stores.firstHistory.open();
        if (hasTable(history, leadingIndex) && hasTable(history, u"geguhq"_s)) {
            ThemeGains gains = readFrom(history, members, RangeSource::history);
            if (gains.membersWithRows > 0) {
                return gains;
            }
        }
    }
    Connection main = stores.main.open();
    return readFrom(main, members, RangeSource::downloaded);
}

QString sourceWords(const ThemeGains& gains, const QDate& today) {
    if (gains.marketDays == 0 || gains.membersWithRows == 0) {
        return u"没有存下它的历史行情：在“工具 / 历史行情”里补全，或在“历史涨幅”里点“开始对比”"_s;
    }
    QStringList words;
    words << (gains.source == RangeSource::history ? u"历史按历史行情库算，到 "_s
                                                   : u"历史按对比时下载的行情算，到 "_s) +
                 dateText(gains.last);
    const qint64 age = gains.last.daysTo(today);
    if (age > daysOfAHoliday) {
        words << u"已是 %1 天前，可在“工具 / 历史行情”里补全"_s.arg(age);
    }
    if (gains.marketDays < longestSpan) {
        words << u"只存了 %1 个交易日"_s.arg(gains.marketDays);
    }
    if (gains.membersWithRows < gains.members) {
        words << u"%1 只里有 %2 只没有历史行情"_s.arg(gains.members)
                     .arg(gains.members - gains.membersWithRows);
    }
    const auto gap = std::ranges::find_if(gains.spans, [&](const SpanGain& it) {
        return it.days <= gains.marketDays && it.daysWithRows < it.days;
    });
    if (gap != gains.spans.end()) {
        words << u"近 %1 日里有 %2 天没有成员的行情"_s.arg(gap->days).arg(gap->days -
                                                                          gap->daysWithRows);
    }
    return words.join(u"，"_s);
}

}  // namespace guanchao
