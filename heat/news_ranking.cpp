#include "heat/news_ranking.h"

#include "base/activity.h"
#include "base/values.h"
#include "heat/heat_grid.h"
#include "heat/url_encode.h"
#include "market/stock_code.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double withoutBase = 1000;

// By position, in both rankings alike. A company's table has one column more, so that there its
// counts take the colours of the growths.
const QList<int> fixedColumns = {3, 5, 7};
const QList<int> signColumns = {4, 6, 8};

void colourNews(ResultGrid& grid, int row) {
    grid.setCellForeColor(row, 1, themeColour);
    grid.setCellForeColor(row, 2, stockColour);
    colourColumns(grid, row, fixedColumns, themeColour);
    colourBySign(grid, row, signColumns);
}

void dressHistory(ResultGrid& grid, int row) {
    for (const int col : signColumns) {
        if (numericPrefix(grid.textMatrix(row, col)) == withoutBase) {
            grid.setTextMatrix(row, col, u"无"_s);
        }
    }
    colourNews(grid, row);
}

QList<CountLine> countLines() {
    return {{u"一日"_s, {u"一日数量"_s}},
            {u"全部"_s, {u"全部数量"_s}},
            {u"自定义"_s, {u"自定义数量"_s}}};
}

}  // namespace

NewsSubject themeNews() {
    return {.table = u"xinwenshul"_s,
            .key = u"zhutiname"_s,
            .keyColumns = u"zhutiname as 主题名称"_s,
            .current = &Globals::dangqianzhuti,
            .searchesNumber = false,
            .widths = {500, 1200, 1800, 1000, 1000, 1100, 1000, 1200, 1200, 1200}};
}

NewsSubject companyNews() {
    return {.table = u"gongsixinwen"_s,
            .key = u"dm"_s,
            .keyColumns = u"dm as 代码,jc as 简称"_s,
            .current = &Globals::dangqiangongsi,
            .searchesNumber = true,
            .widths = {500, 1200, 1100, 1200, 1000, 1000, 1100, 1000, 1200, 1200, 1200}};
}

NewsRanking::NewsRanking(const Stores& stores, Globals& globals, Shell& shell, NewsSubject subject,
                         ResultGrid& ranking, ResultGrid& history)
    : stores_(stores),
      globals_(globals),
      shell_(shell),
      subject_(std::move(subject)),
      ranking_(ranking),
      history_(history) {}

QString NewsRanking::columns() const {
    return u"select date(riqi) as 日期,"_s + subject_.keyColumns +
           u",onecishu as 一日数量,onezhangfu as 一日涨幅,allcishu as 全部数量,"
           u"allzhangfu as 全部涨幅,zdycishu as 自定义数量,zdyzhangfu as 自定义涨幅,"
           u"zdytianshu as 自定义天数 from "_s +
           subject_.table;
}

QString NewsRanking::rowsOf(const QString& day) const {
    return u" where date(riqi)='"_s + day + u"' order by allzhangfu desc,"_s + subject_.key + u' ';
}

// Of each item the row that was written last on its latest day: the grouping by itself leaves the
// choice to the library.
QString NewsRanking::lastRows() const {
    return u" where rowid in (select (select rowid from %1 as days where days.%2 is items.%2"
           u" order by date(riqi) desc,rowid desc limit 1) from (select distinct %2 from %1) as"
           u" items) group by %2  order by date(riqi) desc,%2 "_s.arg(subject_.table, subject_.key);
}

void NewsRanking::showRanking(bool all) {
    const Activity activity(u"读取新闻数量排名"_s);
    Connection store = stores_.heat.open();
    const Recordset latest(store, u"select date(riqi) as riqi from "_s + subject_.table +
                                      u" order by datetime(riqi) desc limit 1"_s);
    emptyHeatGrid(ranking_);
    if (latest.atEnd()) {
        return;
    }
    Recordset items(store, columns() + (all ? lastRows() : rowsOf(latest.value(u"riqi").toText())));
    fillHeatGrid(items, ranking_, subject_.widths, colourNews);
}

bool NewsRanking::choose(int row) {
    if (!ranking_.isDataRow(row)) {
        return false;
    }
    globals_.*subject_.current = trimBlanks(ranking_.textMatrix(row, 2));
    emptyHeatGrid(history_);
    return true;
}

QList<DayValues> NewsRanking::showHistory() {
    const Activity activity(u"读取历史新闻数量"_s);
    Connection store = stores_.heat.open();
    Recordset days(store, columns() + u" where "_s + subject_.key + u"='"_s + current() +
                              u"' order by date(riqi) desc "_s);
    fillHeatGrid(days, history_, subject_.widths, dressHistory);
    return dayValues(days, countLines());
}

void NewsRanking::openSearchPage(const QString& searchTemplate) {
    const QString words = withoutMarks(current());
    shell_.open(
        searchPage(searchTemplate, subject_.searchesNumber ? words.right(codeDigits) : words));
}

}  // namespace guanchao
