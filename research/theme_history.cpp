#include "research/theme_history.h"

#include "base/activity.h"
#include "base/values.h"
#include "grid/tianchongbiao.h"
#include "research/research_run.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString indexCode = u"SH000001"_s;
constexpr int shownDays = 90;

QString percent(double value) {
    return numberText(roundTo(value, 2));
}

QString lineOf(const HistoryPoint& total) {
    return u"主题总涨幅("_s + percent(total.theme) + u")-大盘总涨幅("_s + percent(total.index) +
           u")=涨幅差("_s + percent(total.difference()) + u")"_s;
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
    return u"select distinct dm,datetime(riqi) as riqi,zhangfu,sp  FROM geguhq where dm='"_s +
           indexCode + u"' and datetime(riqi)>='"_s + timeText(first) +
           u"' and datetime(riqi)<='"_s + timeText(last) + u"' order by datetime(riqi) asc"_s;
}

// The theme's mean gain of the day, null if no member has a row.
Value themeGain(Connection& store, const QString& theme, const QString& day) {
    const Recordset result(
        store,
        u"select  avg(zhangfu) as zhutizhangfu from dzhzhuti AS dzhzhuti1 INNER JOIN geguhq"
        u" AS geguhq1 on dzhzhuti1.dm=geguhq1.dm where dzhzhuti1.zhutiname='"_s +
            theme + u"' and datetime(geguhq1.riqi)='"_s + day + u"'"_s);
    return result.value(0);
}

// All at once: day by day each statement would sync the disk, and a transaction around the days
// would hold the lock while events happen.
void writeComparison(Connection& store, const QStringList& statements) {
    Transaction transaction(store);
    for (const QString& statement : statements) {
        store.execute(statement);
    }
    transaction.commit();
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
    const QString theme = u"主题 "_s + twoDecimals(point.theme) + u"%  "_s + index + u"  差 "_s +
                          twoDecimals(point.difference()) + u"%"_s;
    return dateText(point.day) + u"  "_s + (hasTheme ? theme : index);
}

ThemeHistory::ThemeHistory(const Stores& stores, Globals& globals, const Clock& clock,
                           Dialogs& dialogs, DayHistory history, AskedHistory& asked,
                           CancellableRun& run, ResultGrid& grid, Show show)
    : stores_(stores),
      globals_(globals),
      clock_(clock),
      dialogs_(dialogs),
      run_(run),
      cache_(globals, clock, std::move(history), asked, run),
      grid_(grid),
      show_(std::move(show)) {}

DateTexts ThemeHistory::firstDay() const {
    return dateTexts(clock_.now().date().addDays(-shownDays));
}

DateTexts ThemeHistory::lastDay() const {
    return dateTexts(clock_.now().date());
}

std::optional<ThemeHistoryResult> ThemeHistory::compare(const DateTexts& first,
                                                        const DateTexts& last,
                                                        const QString& theme) {
    if (!isReadable(first) || !isReadable(last)) {
        dialogs_.tell(u"日期不对，年、月、日都要填数字。"_s);
        return std::nullopt;
    }
    const Range range = {packDate(first), packDate(last), trimBlanks(theme)};
    if (isRefused(range)) {
        return std::nullopt;
    }
    ThemeHistoryResult result;
    const bool ended = run_.run([&] {
        run_.letEventsHappen();
        compare(range, result);
    });
    return ended ? std::optional(result) : std::nullopt;
}

bool ThemeHistory::isRefused(const Range& range) {
    if (range.first.daysTo(range.last) < 0) {
        dialogs_.tell(u" 结束日期一定要大于开始日期哟！"_s);
        return true;
    }
    return refusesWhileWriting(globals_, dialogs_, u"对比"_s);
}

void ThemeHistory::compare(const Range& range, ThemeHistoryResult& result) {
    const Activity activity(
        u"对比主题与大盘的历史涨幅"_s,
        u"已经下载的历史行情保留在库里；对比表要么是完整的新结果，要么还是上一次的。"_s);
    Connection store = stores_.main.open();
    updateCache(store, range);
    writeComparison(store, compareDays(store, range, result));
    fillGrid(store);
}

void ThemeHistory::updateCache(Connection& store, const Range& range) {
    show_({indexCode, 0, 1});
    cache_.update(store, indexCode, range.first, range.last);
    Recordset members(
        store, u"select distinct dm  FROM dzhzhuti where zhutiname='"_s + range.theme + u"'"_s);
    for (int at = 0; !members.atEnd(); members.moveNext()) {
        const QString dm = members.value(u"dm").toText();
        show_({dm, ++at, members.count()});
        cache_.update(store, dm, range.first, range.last);
        run_.letEventsHappenIfDue();
    }
}

QStringList ThemeHistory::compareDays(Connection& store, const Range& range,
                                      ThemeHistoryResult& result) {
    QStringList statements = {u"delete from zhutidapanhq"_s};
    HistoryPoint total;
    for (Recordset days(store, indexQuery(range.first, range.last)); !days.atEnd();
         days.moveNext()) {
        const QString day = days.value(u"riqi").toText();
        const Value& gain = days.value(u"zhangfu");
        show_({day.left(10), static_cast<int>(result.points.size()) + 1, days.count()});
        total.day = QDate::fromString(day.left(10), Qt::ISODate);
        total.index += gain.toNumber();
        statements << u"insert into zhutidapanhq(riqi,dapanzhangfu,dapansp) values('"_s + day +
                          u"',"_s + gain.toText() + u",'"_s + days.value(u"sp").toText() + u"')"_s;
        const Value mean = themeGain(store, range.theme, day);
        if (!mean.isNull()) {
            total.theme += mean.toNumber();
            result.hasTheme = true;
            statements << u"update zhutidapanhq set zhutiname='"_s + range.theme +
                              u"',zhutizhangfu="_s + mean.toText() + u" where datetime(riqi)='"_s +
                              day + u"'"_s;
        }
        result.points << total;
        run_.letEventsHappenIfDue();
    }
    result.line = lineOf(total);
    return statements;
}

void ThemeHistory::fillGrid(Connection& store) {
    Recordset days(store,
                   u"select riqi as 日期,zhutiname as 主题名称,zhutizhangfu as 主题涨幅,"
                   u"dapanzhangfu as 大盘涨幅,zhutizhangfu-dapanzhangfu as 涨幅差,"
                   u"dapansp as 大盘指数 from zhutidapanhq order by datetime(riqi) desc"_s);
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
