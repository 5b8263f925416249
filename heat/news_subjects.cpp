#include "base/values.h"
#include "heat/collector_contract.h"
#include "heat/heat_subjects.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

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
        if (numericPrefix(grid.textMatrix(row, col)) == noGrowth) {
            grid.setTextMatrix(row, col, noGrowthWord);
        }
    }
    colourNews(grid, row);
}

// `keyColumns` is what the grids show of an item, as words of the statement.
QString columns(const QString& table, const QString& keyColumns) {
    return u"select date(riqi) as 日期,"_s + keyColumns +
           u",onecishu as 一日数量,onezhangfu as 一日涨幅,allcishu as 全部数量,"
           u"allzhangfu as 全部涨幅,zdycishu as 自定义数量,zdyzhangfu as 自定义涨幅,"
           u"zdytianshu as 自定义天数 from "_s +
           table;
}

// Of each item the row that was written last on its latest day: the grouping by itself leaves the
// choice to the library.
QString lastRows(const QString& table, const QString& key) {
    return u" where rowid in (select (select rowid from %1 as days where days.%2 is items.%2"
           u" order by date(riqi) desc,rowid desc limit 1) from (select distinct %2 from %1) as"
           u" items) group by %2  order by date(riqi) desc,%2 "_s.arg(table, key);
}

// All that themes and companies have in common.
HeatSubject news(const QString& table, const QString& key, const QString& keyColumns,
                 const QList<int>& widths) {
    const QString select = columns(table, keyColumns);
    HeatSubject subject;
    subject.rankingActivity = u"读取新闻数量排名"_s;
    subject.historyActivity = u"读取历史新闻数量"_s;
    subject.dayTable = table;
    subject.key = key;
    subject.ofDay = [select, key](const QString& day, const QString& first) -> QString {
        return select + u" where date(riqi)="_s + quoted(day) + u" order by "_s + first +
               u"allzhangfu desc,"_s + key + u' ';
    };
    subject.ofAll = select + lastRows(table, key);
    subject.ofItem = [select, key](const QString& item) -> QString {
        return select + u" where "_s + key + u"="_s + quoted(item) +
               u" order by date(riqi) desc "_s;
    };
    subject.rankingWidths = subject.historyWidths = widths;
    subject.rankingWidths[heatItemColumn] += sparklineTwips;
    subject.dressRanking = colourNews;
    subject.dressHistory = dressHistory;
    subject.lines = {{u"一日"_s, {u"一日数量"_s}},
                     {u"全部"_s, {u"全部数量"_s}},
                     {u"自定义"_s, {u"自定义数量"_s}, true}};
    const QString whenCounted = u"case when d.zdytianshu>0 then d.%1 end"_s;
    subject.fields = {{u"一日数量"_s, u"d.onecishu"_s, u"onexian"_s},
                      {u"一日涨幅"_s, u"d.onezhangfu"_s, {}, true},
                      {u"全部数量"_s, u"d.allcishu"_s, u"allxian"_s},
                      {u"全部涨幅"_s, u"d.allzhangfu"_s, {}, true},
                      {u"自定义数量"_s, whenCounted.arg(u"zdycishu"_s), u"zdyxian"_s},
                      {u"自定义涨幅"_s, whenCounted.arg(u"zdyzhangfu"_s), {}, true}};
    return subject;
}

}  // namespace

HeatSubject themeNews() {
    HeatSubject subject = news(u"xinwenshul"_s, u"zhutiname"_s, u"zhutiname as 主题名称"_s,
                               {500, 1200, 1800, 1000, 1000, 1100, 1000, 1200, 1200, 1200});
    subject.kind = u"主题"_s;
    subject.collectWord = collectThemes;
    subject.current = &Globals::dangqianzhuti;
    subject.searchWords = [](const QString& zhutiname) { return zhutiname; };
    return subject;
}

HeatSubject companyNews() {
    HeatSubject subject = news(u"gongsixinwen"_s, u"dm"_s, u"dm as 代码,jc as 简称"_s,
                               {500, 1200, 1100, 1200, 1000, 1000, 1100, 1000, 1200, 1200, 1200});
    subject.kind = u"公司"_s;
    subject.name = u"jc"_s;
    subject.collectWord = collectCompanies;
    subject.current = &Globals::dangqiangongsi;
    subject.searchWords = [](const QString& dm) { return dm.right(codeDigits); };
    return subject;
}

}  // namespace guanchao
