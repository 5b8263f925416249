#include "research/theme_history.h"

#include <QHash>
#include <algorithm>
#include <limits>
#include <utility>

#include "base/values.h"
#include "base/worker.h"
#include "grid/tianchongbiao.h"
#include "research/research_run.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int shownDays = 90;

QString percent(double value) {
    return numberText(roundTo(value, 2));
}

// What has no prices has no gain: 0 would be one.
QString lineOf(const HistoryPoint& total, bool hasTheme, bool hasIndex) {
    const auto known = [](bool isKnown, double gain) { return isKnown ? percent(gain) : u"无"_s; };
    return u"主题总涨幅("_s + known(hasTheme, total.theme) + u")-大盘总涨幅("_s +
           known(hasIndex, total.index) + u")=涨幅差("_s +
           known(hasTheme && hasIndex, total.difference()) + u")"_s;
}

bool beginsWithDigit(const QString& text) {
    const QString trimmed = trimBlanks(text);
    return !trimmed.isEmpty() && trimmed[0].isDigit();
}

bool isReadable(const DateTexts& texts) {
    return beginsWithDigit(texts.year) && beginsWithDigit(texts.month) &&
           beginsWithDigit(texts.day);
}

QString indexQuery(const QDate& first, const QDate& last) {
    return u"select distinct dm,datetime(riqi) as riqi,zhangfu,sp  FROM geguhq where dm="_s +
           quoted(leadingIndex) + u" and datetime(riqi)>="_s + quoted(timeText(first)) +
           u" and datetime(riqi)<="_s + quoted(timeText(last)) + u" order by datetime(riqi) asc"_s;
}

// The theme's mean gain of the day, null if no member has a row.
Value themeGain(Connection& store, const QString& theme, const QString& day) {
    const Recordset result(
        store,
        u"select  avg(zhangfu) as zhutizhangfu from dzhzhuti AS dzhzhuti1 INNER JOIN geguhq"
        u" AS geguhq1 on dzhzhuti1.dm=geguhq1.dm where dzhzhuti1.zhutiname="_s +
            quoted(theme) + u" and datetime(geguhq1.riqi)="_s + quoted(day));
    return result.value(0);
}

// All at once: day by day each statement would sync the disk, and a transaction around the days
// would hold the lock for long.
void writeComparison(Connection& store, const QStringList& statements) {
    Transaction transaction(store);
    for (const QString& statement : statements) {
        store.execute(statement);
    }
    transaction.commit();
}

using Works = Work<ThemeHistoryStep>;

// The index and the theme's stocks, with the days that are there.
QList<CachedDays> cachedCodes(const StoreFile& main, const QString& theme, const Works& work) {
    const Activity activity = comparing();
    Connection store = main.open();
    QList<CachedDays> codes = {cachedDays(store, leadingIndex)};
    Recordset members(store,
                      u"select distinct dm  FROM dzhzhuti where zhutiname="_s + quoted(theme));
    for (; !members.atEnd(); members.moveNext()) {
        work.endIfAbandoned();
        const QString dm = members.value(u"dm").toText();
        if (dm != leadingIndex) {
            codes << cachedDays(store, dm);
        }
    }
    return codes;
}

// Returns the statements that write the comparison.
QStringList compareDays(Connection& store, const HistoryRange& range, ThemeHistoryResult& result,
                        Works& work) {
    QStringList statements = {u"delete from zhutidapanhq"_s};
    HistoryPoint total;
    for (Recordset days(store, indexQuery(range.first, range.last)); !days.atEnd();
         days.moveNext()) {
        const QString day = days.value(u"riqi").toText();
        const Value& gain = days.value(u"zhangfu");
        work.tell({day.left(10), static_cast<int>(result.points.size()) + 1, days.count()});
        work.endIfAbandoned();
        total.day = QDate::fromString(day.left(10), Qt::ISODate);
        total.index += gain.toNumber();
        statements << u"insert into zhutidapanhq(riqi,dapanzhangfu,dapansp) values("_s +
                          quoted(day) + u',' + numberText(gain.toNumber()) + u',' +
                          quoted(days.value(u"sp").toText()) + u")"_s;
        const Value mean = themeGain(store, range.theme, day);
        total.isGap = mean.isNull();
        if (!mean.isNull()) {
            total.theme += mean.toNumber();
            result.hasTheme = true;
            statements << u"update zhutidapanhq set zhutiname="_s + quoted(range.theme) +
                              u",zhutizhangfu="_s + numberText(mean.toNumber()) +
                              u" where datetime(riqi)="_s + quoted(day);
        }
        result.points << total;
    }
    result.line = lineOf(total, result.hasTheme, !result.points.isEmpty());
    return statements;
}

// The gain of each day of which the stock has a row.
QHash<QDate, double> gainsOf(Connection& store, const QString& dm, const HistoryRange& range) {
    QHash<QDate, double> gains;
    Recordset days(store,
                   u"select datetime(riqi) as riqi,avg(zhangfu) as zhangfu from geguhq where"
                   u" dm="_s +
                       quoted(dm) + u" and datetime(riqi)>="_s + quoted(timeText(range.first)) +
                       u" and datetime(riqi)<="_s + quoted(timeText(range.last)) +
                       u" and zhangfu is not null group by datetime(riqi)"_s);
    for (; !days.atEnd(); days.moveNext()) {
        const QDate day = QDate::fromString(days.value(u"riqi").toText().left(10), Qt::ISODate);
        gains.insert(day, days.value(u"zhangfu").toNumber());
    }
    return gains;
}

void addUp(const QHash<QDate, double>& gains, const QList<HistoryPoint>& points,
           MemberSums& member) {
    for (const HistoryPoint& point : points) {
        const auto gain = gains.constFind(point.day);
        if (gain == gains.cend()) {
            member.sums << std::numeric_limits<double>::quiet_NaN();
        } else {
            member.total += *gain;
            member.sums << member.total;
            member.hasRows = true;
        }
    }
}

QList<MemberSums> memberSums(Connection& store, const HistoryRange& range,
                             const QList<HistoryPoint>& points, const Works& work) {
    QList<MemberSums> members;
    Recordset codes(store, u"select dm,max(jc) as jc from dzhzhuti where zhutiname="_s +
                               quoted(range.theme) + u" group by dm order by dm"_s);
    for (; !codes.atEnd(); codes.moveNext()) {
        work.endIfAbandoned();
        MemberSums member = {codes.value(u"dm").toText(), codes.value(u"jc").toText(), {}};
        addUp(gainsOf(store, member.dm, range), points, member);
        members << member;
    }
    std::ranges::stable_sort(members, {}, [](const MemberSums& member) {
        return std::pair(!member.hasRows, -member.total);
    });
    return members;
}

struct Comparison {
    ThemeHistoryResult result;
    Recordset days;  // newest first
};

Comparison compareIn(const StoreFile& main, const HistoryRange& range, Works& work) {
    const Activity activity = comparing();
    Connection store = main.open();
    ThemeHistoryResult result;
    writeComparison(store, compareDays(store, range, result, work));
    result.members = memberSums(store, range, result.points, work);
    return {result, Recordset(store,
                              u"select riqi as 日期,zhutiname as 主题名称,"
                              u"zhutizhangfu as 主题涨幅,dapanzhangfu as 大盘涨幅,"
                              u"zhutizhangfu-dapanzhangfu as 涨幅差,dapansp as 大盘指数"
                              u" from zhutidapanhq order by datetime(riqi) desc"_s)};
}

QString missedWords(const MissedDays& missed) {
    if (missed.codes.isEmpty()) {
        return {};
    }
    return u"有 "_s + QString::number(missed.codes.size()) +
           u" 只的历史行情没有取到，按库里已有的对比。"_s + missed.reason +
           u"。过一会儿再点“开始对比”。"_s;
}

// Of sums that rest on fewer days than the range has, or on none.
QString gapWords(const ThemeHistoryResult& result, const QString& theme) {
    if (result.points.isEmpty()) {
        return u"这段日期里没有大盘的历史行情，没有可比的日子。"_s;
    }
    if (theme.isEmpty()) {
        return {};
    }
    if (!result.hasTheme) {
        return u"这段日期里主题的股票都没有历史行情。"_s;
    }
    const auto gaps = std::ranges::count(result.points, true, &HistoryPoint::isGap);
    return gaps == 0 ? QString()
                     : u"主题有 "_s + QString::number(gaps) +
                           u" 天没有行情，图里断开，主题总涨幅不含这些天。"_s;
}

// A day without a theme has no sign.
void colourDays(ResultGrid& grid) {
    for (int row = 1; row < grid.rows(); ++row) {
        grid.setCellBackColor(row, 1, themeColour);
        grid.setCellBackColor(row, 2, stockColour);
        for (int col = 3; col < grid.cols(); ++col) {
            if (grid.number(row, col)) {
                grid.setCellBackColor(row, col, signColour(grid, row, col));
            }
        }
    }
}

}  // namespace

QString pointText(const HistoryPoint& point, bool hasTheme) {
    const QString index = u"大盘 "_s + twoDecimals(point.index) + u"%"_s;
    if (hasTheme && point.isGap) {
        return dateText(point.day) + u"  主题没有行情  "_s + index;
    }
    const QString theme = u"主题 "_s + twoDecimals(point.theme) + u"%  "_s + index + u"  差 "_s +
                          twoDecimals(point.difference()) + u"%"_s;
    return dateText(point.day) + u"  "_s + (hasTheme ? theme : index);
}

ThemeHistory::ThemeHistory(const Stores& stores, Globals& globals, const Clock& clock,
                           Dialogs& dialogs, PastPrices prices, AskedHistory& asked,
                           ResultGrid& grid, Show show)
    : stores_(stores),
      globals_(globals),
      clock_(clock),
      dialogs_(dialogs),
      cache_(stores, globals, clock, std::move(prices), asked),
      grid_(grid),
      show_(std::move(show)) {}

DateTexts ThemeHistory::firstDay() const {
    return dateTexts(clock_.now().date().addDays(-shownDays));
}

DateTexts ThemeHistory::lastDay() const {
    return dateTexts(clock_.now().date());
}

std::optional<HistoryRange> ThemeHistory::readRange(const DateTexts& first, const DateTexts& last,
                                                    const QString& theme) {
    if (!isReadable(first) || !isReadable(last)) {
        dialogs_.tell(u"日期不对，年、月、日都要填数字。"_s);
        return std::nullopt;
    }
    const HistoryRange range = {packDate(first), packDate(last), trimBlanks(theme)};
    if (range.first.daysTo(range.last) < 0) {
        dialogs_.tell(u" 结束日期一定要大于开始日期哟！"_s);
        return std::nullopt;
    }
    return range;
}

std::optional<HistoryRange> ThemeHistory::beginRange(const DateTexts& first, const DateTexts& last,
                                                     const QString& theme) {
    const std::optional<HistoryRange> range = readRange(first, last, theme);
    return range && !refusesWhileWriting(globals_, dialogs_, u"对比"_s) ? range : std::nullopt;
}

QCoro::Task<std::optional<ThemeHistoryResult>> ThemeHistory::compare(DateTexts first,
                                                                     DateTexts last, QString theme,
                                                                     std::stop_token stop) {
    const std::optional<HistoryRange> range = beginRange(first, last, theme);
    if (!range) {
        co_return std::nullopt;
    }
    const MissedDays missed = co_await updateCache(range->theme, range->first, range->last, stop);
    const QString lacks = missedWords(missed);
    const ThemeHistoryResult result = co_await compareRange(*range, lacks, stop);
    co_return result;
}

QCoro::Task<std::optional<ThemeHistoryResult>> ThemeHistory::compareStored(DateTexts first,
                                                                           DateTexts last,
                                                                           QString theme,
                                                                           std::stop_token stop) {
    const std::optional<HistoryRange> range = beginRange(first, last, theme);
    if (!range) {
        co_return std::nullopt;
    }
    const QString lacks = u"按库里已有的行情对比，没有下载；要补全就点“开始对比”。"_s;
    const ThemeHistoryResult result = co_await compareRange(*range, lacks, stop);
    co_return result;
}

QCoro::Task<ThemeHistoryResult> ThemeHistory::compareRange(HistoryRange range, QString lacks,
                                                           std::stop_token stop) {
    const auto job = [main = stores_.main, range](Works& work) {
        return compareIn(main, range, work);
    };
    std::optional<Comparison> comparison =
        co_await inWorker<ThemeHistoryStep>(job, show_, {}, stop);
    fillGrid(comparison->days);
    QStringList words = {lacks, gapWords(comparison->result, range.theme)};
    words.removeAll(QString());
    comparison->result.missed = words.join(u'\n');
    co_return comparison->result;
}

QCoro::Task<MissedDays> ThemeHistory::updateCache(QString theme, QDate first, QDate last,
                                                  std::stop_token stop) {
    show_({});
    const auto read = [main = stores_.main, theme](const Works& work) {
        return cachedCodes(main, theme, work);
    };
    const std::optional<QList<CachedDays>> codes =
        co_await inWorker<ThemeHistoryStep>(read, show_, {}, stop);
    const DayCache::Show show = [this](const QString& dm, int done, int total) {
        show_({dm, done, total});
    };
    const MissedDays missed = co_await cache_.update(*codes, first, last, show, stop);
    co_return missed;
}

void ThemeHistory::fillGrid(Recordset& days) {
    const GridFill fill(grid_);
    grid_.clear();
    grid_.setRows(1);
    grid_.setCols(1);
    if (days.count() > 0) {
        tianchongbiao(days, grid_, 1);
        grid_.setColWidths({500, 1200, 1900, 1000, 1000, 1000, 1500});
        colourDays(grid_);
    }
}

}  // namespace guanchao
