#include "themes/theme_facts.h"

#include <algorithm>
#include <cmath>

#include "base/activity.h"
#include "base/values.h"
#include "grid/table_columns.h"
#include "heat/news_notes.h"
#include "store/recordset.h"
#include "store/row_cursor.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// What the store has no value of stays empty.
void setNumber(ResultGrid& grid, int row, int col, double value) {
    if (!std::isnan(value)) {
        grid.setReal(row, col, value);
    }
}

bool isThere(const StoreFile& main, const QString& theme) {
    Connection store = main.open();
    return !Recordset(store,
                      u"select 1 from dzhzhuti where zhutiname="_s + quoted(theme) + u" limit 1"_s)
                .atEnd();
}

// Those that hold every one of the codes.
QStringList themesWith(const StoreFile& main, const QStringList& codes) {
    Connection store = main.open();
    RowCursor row(store, u"select zhutiname from dzhzhuti where dm in ("_s + quotedList(codes) +
                             u") group by zhutiname having count(distinct dm)="_s +
                             QString::number(codes.size()) + u" order by zhutiname"_s);
    QStringList themes;
    while (row.next()) {
        themes << row.string(0);
    }
    return themes;
}

ThemeMonitor monitorOf(const RowCursor& row) {
    const QString kind = row.string(2);
    return {.dm = row.string(0),
            .name = row.string(1),
            .condition = kind + u' ' + row.string(3) + u' ' + numberText(row.number(4)) +
                         (kind == u"涨幅"_s ? u"%"_s : QString()),
            .latest = row.number(5),
            .alarm = row.string(6)};
}

}  // namespace

ThemeMembers readThemeMembers(const Stores& stores, const QString& theme,
                              const QStringList& formerCodes) {
    const Activity activity(u"读取主题的个股"_s);
    ThemeMembers members;
    members.exists = isThere(stores.main, theme);
    members.theme = readThemeBox(stores, theme);
    members.stocks = readStockBoxes(stores, theme);
    std::ranges::stable_sort(members.stocks, [](const MapBox& a, const MapBox& b) {
        return std::isnan(b.gain) ? !std::isnan(a.gain) : a.gain > b.gain;
    });
    if (!members.exists && !formerCodes.isEmpty()) {
        members.heirs = themesWith(stores.main, formerCodes);
    }
    return members;
}

QList<DayValues> readThemeNews(const Stores& stores, const QString& theme, const QDate& today) {
    const Activity activity(u"读取主题的新闻数量"_s);
    Connection heat = stores.heat.open();
    const NewsNotes notes = readNewsNotes(heat, u"xinwenshul"_s, u" and item="_s + quoted(theme));
    RowCursor row(heat, u"select date(riqi),onecishu from xinwenshul where zhutiname="_s +
                            quoted(theme) + u" and date(riqi)>"_s +
                            quoted(dateText(today.addDays(-newsDays))) +
                            u" order by date(riqi),rowid"_s);
    QList<DayValues> days;
    while (row.next()) {
        const QString day = row.string(0);
        const NewsNote note = notes.value({day, theme});
        days << DayValues{.day = QDate::fromString(day, Qt::ISODate),
                          .values = {row.number(1)},
                          .words = day + u"　"_s + (note.onexian ? u"≥"_s : QString()) +
                                   numberText(row.number(1)) + u" 条"_s,
                          .source = note.laiyuan};
    }
    return days;
}

QList<ThemeArticle> readThemeArticles(const Stores& stores, const QString& theme) {
    const Activity activity(u"读取主题的文章"_s);
    Connection store = stores.article.open();
    RowCursor row(store,
                  u"select id,date(rq),zuozhe,biaoti from wenzhang where dalei='主题' and"
                  u" xiaolei="_s +
                      quoted(theme) + u" order by date(rq) desc,id desc limit "_s +
                      QString::number(mostArticles));
    QList<ThemeArticle> articles;
    while (row.next()) {
        articles << ThemeArticle{.id = static_cast<qint32>(row.value(0).toInteger()),
                                 .day = row.string(1),
                                 .author = row.string(2),
                                 .title = row.string(3)};
    }
    return articles;
}

QList<ThemeMonitor> readThemeMonitors(const Stores& stores, const QString& theme) {
    const Activity activity(u"读取主题的监控"_s);
    Connection store = stores.main.open();
    RowCursor row(
        store,
        u"select '',zhutiname,'涨幅',bijiaofu,baojinzhi,zhangfu,datetime(baojintime)"
        u" from zhutijiankong where zhutiname=%1 union all select * from (select dm,jc,leixin,"
        u"bijiaofu,baojinzhi,case leixin when '涨幅' then zhangfu else sp end,"
        u"datetime(baojintime) from gegujiankong where dm in (select dm from dzhzhuti where"
        u" zhutiname=%1) order by dm,rowid)"_s.arg(quoted(theme)));
    QList<ThemeMonitor> monitors;
    while (row.next()) {
        monitors << monitorOf(row);
    }
    return monitors;
}

void fillMembers(ResultGrid& grid, const QList<MapBox>& stocks) {
    const GridFill fill(grid, GridFill::Rows::ofTheSameList);
    beginTable(grid,
               {{u"代码"_s, 1000},
                {u"简称"_s, 1000},
                {u"涨幅"_s, 750},
                {u"涨幅图"_s, 1900},
                {u"相关度"_s, 750},
                {u"成交金额"_s, 1000}},
               stocks.size());
    for (int row = 1; row < grid.rows(); ++row) {
        const MapBox& stock = stocks[row - 1];
        grid.setTextMatrix(row, memberCodeColumn, stock.key);
        grid.setTextMatrix(row, memberNameColumn, stock.name);
        grid.setCellForeColor(row, memberNameColumn, stockColour);
        setGain(grid, row, 3, stock.gain);
        setGain(grid, row, memberBarColumn, stock.gain);
        if (!std::isnan(stock.attention)) {
            grid.setInteger(row, 5, std::llround(stock.attention));
        }
        setNumber(grid, row, 6, stock.turnover);
    }
}

void fillArticles(ResultGrid& grid, const QList<ThemeArticle>& articles) {
    const GridFill fill(grid, GridFill::Rows::ofTheSameList);
    beginTable(grid, {{u"日期"_s, 1050}, {u"标题"_s, 3000}, {u"作者"_s, 800}, {u"编号"_s, 600}},
               articles.size());
    for (int row = 1; row < grid.rows(); ++row) {
        const ThemeArticle& article = articles[row - 1];
        grid.setTextMatrix(row, 1, article.day);
        grid.setTextMatrix(row, 2, article.title);
        grid.setTextMatrix(row, 3, article.author);
        grid.setInteger(row, articleIdColumn, article.id);
    }
    grid.setKeyColumns({articleIdColumn});
}

void fillMonitors(ResultGrid& grid, const QList<ThemeMonitor>& monitors) {
    const GridFill fill(grid, GridFill::Rows::ofTheSameList);
    beginTable(grid,
               {{u"代码"_s, 950},
                {u"名称"_s, 1000},
                {u"条件"_s, 1150},
                {u"现在"_s, 700},
                {u"报警时间"_s, 1800}},
               monitors.size());
    for (int row = 1; row < grid.rows(); ++row) {
        const ThemeMonitor& monitor = monitors[row - 1];
        grid.setTextMatrix(row, 1, monitor.dm.isEmpty() ? u"主题"_s : monitor.dm);
        grid.setTextMatrix(row, 2, monitor.name);
        grid.setCellForeColor(row, 2, monitor.dm.isEmpty() ? themeColour : stockColour);
        grid.setTextMatrix(row, 3, monitor.condition);
        setNumber(grid, row, 4, monitor.latest);
        grid.setTextMatrix(row, 5, monitor.alarm.isEmpty() ? u"没有报过"_s : monitor.alarm);
    }
    grid.setKeyColumns({1, 2, 3});
}

}  // namespace guanchao
