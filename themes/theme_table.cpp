#include "themes/theme_table.h"

#include "base/activity.h"
#include "base/values.h"
#include "grid/tianchongbiao.h"
#include "market/trading_session.h"
#include "services/delisted.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// By position, whichever form the query had.
void setStockWidths(ResultGrid& grid, int fieldCount) {
    grid.setColWidths({500, 1500, ResultGrid::standardWidth, 1000, 800, 900, 900, 900, 900, 900,
                       900, 1200, 1200});
    grid.setColWidth(fieldCount, 2500);
}

// The columns are told by the positions of a theme's table. Among all stocks they lie one place to
// the left, so that 收盘 stays uncoloured there.
void colourStocks(ResultGrid& grid, int fieldCount) {
    for (int row = 1; row < grid.rows(); ++row) {
        grid.setCellForeColor(row, 1, themeColour);
        grid.setCellForeColor(row, 3, stockColour);
        for (int col = 5; col < fieldCount; ++col) {
            grid.setCellForeColor(row, col, signColour(grid, row, col));
        }
    }
}

void colourThemes(ResultGrid& grid) {
    constexpr int gain = 2;
    for (int row = 1; row < grid.rows(); ++row) {
        grid.setCellForeColor(row, gain, signColour(grid, row, gain));
    }
}

QString membersQuery(const QString& theme, const QString& time) {
    return u"select zhutiname as 主题名称,dmb1.dm as 代码,dmb1.jc as 简称,xiangguandu as 相关度,"
           u"sp as 收盘,zhangjine as 涨跌,zhangfu as 涨幅,kp as 开盘,zg as 最高,zd as 最低,"
           u"totalsl as 成交量,totaljine as 成交金额,"_s +
           time +
           u" as 更新时间 from dzhzhuti"
           u"  AS dzhzhuti1 INNER JOIN dmb AS dmb1 on dzhzhuti1.dm=dmb1.dm and"
           u" dzhzhuti1.zhutiname="_s +
           quoted(theme) + u"   order by zhangfu desc,dzhzhuti1.rowid"_s;
}

QString allStocksQuery(const QString& time) {
    return u"select zhutiname as 主题名称,dmb1.dm as 代码,dmb1.jc as 简称,sp as 收盘,"
           u"zhangjine as 涨跌,zhangfu as 涨幅,kp as 开盘,zg as 最高,zd as 最低,"
           u"totalsl as 成交量,totaljine as 成交金额,"_s +
           time +
           u" as 更新时间 from dmb"
           u" AS dmb1 left JOIN  (select dm,max(zhutiname) as zhutiname from dzhzhuti group by dm)"
           u"  AS dzhzhuti1  on dmb1.dm=dzhzhuti1.dm   order by zhangfu desc,dmb1.rowid"_s;
}

}  // namespace

ThemeTable::ThemeTable(const Stores& stores, Globals& globals, const Clock& clock, Dialogs& dialogs,
                       ResultGrid& themes, ResultGrid& stocks)
    : stores_(stores),
      globals_(globals),
      clock_(clock),
      dialogs_(dialogs),
      themes_(themes),
      stocks_(stocks) {}

void ThemeTable::refresh(const QString& threshold, const ShowLabels& showLabels) {
    const Activity activity(u"刷新主题表"_s);
    {
        Connection connection = stores_.main.open();
        readLabels(connection, showLabels);
        fillThemes(connection, threshold,
                   search_ ? GridFill::Rows::ofAnotherList : GridFill::Rows::ofTheSameList);
        search_.reset();
    }
    followSession(globals_, clock_.now());
}

void ThemeTable::refreshShown(const QString& threshold, const ShowLabels& showLabels) {
    if (!search_) {
        refresh(threshold, showLabels);
        return;
    }
    const Activity activity(u"刷新主题表"_s);
    Connection connection = stores_.main.open();
    readLabels(connection, showLabels);
    fillFound(connection, *search_, GridFill::Rows::ofTheSameList);
}

void ThemeTable::readLabels(Connection& connection, const ShowLabels& showLabels) {
    const Recordset times(connection,
                          u"select datetime(xiugaizhutitime) as xiugaizhutitime,datetime(hqtime)"
                          u" as hqtime from tempcanshu"_s);
    if (!times.atEnd()) {
        showLabels({u"主题库更新时间："_s + times.value(u"xiugaizhutitime").toText(),
                    u"行情更新时间："_s + times.value(u"hqtime").toText()});
    }
}

void ThemeTable::fillThemes(Connection& connection, const QString& threshold, GridFill::Rows rows) {
    Recordset themes(connection,
                     u"select  zhutiname as 主题名称,avg(zhangfu) as 涨幅,count(*) as 只数,"
                     u"max(guanzhudu) as 关注度,max(datetime(ztktime)) as 添加时间 from dzhzhuti"
                     u" AS dzhzhuti1 INNER JOIN dmb AS dmb1 on dzhzhuti1.dm=dmb1.dm"
                     u" where guanzhudu>"_s +
                         numberText(numericPrefix(threshold)) +
                         u" group by zhutiname order by 涨幅 desc,zhutiname"_s);
    const GridFill fill(themes_, rows);
    themes_.clear();
    if (themes.count() > 0) {
        tianchongbiao(themes, themes_, 1);
        themes_.setColWidths({500, 1600, 900, 800, 800, 2000});
        colourThemes(themes_);
    } else {
        themes_.setRows(1);
        themes_.setCols(1);
    }
}

int ThemeTable::themeCount() const {
    const Activity activity(u"刷新主题表"_s);
    Connection connection = stores_.main.open();
    return static_cast<int>(Recordset(connection,
                                      u"select count(distinct zhutiname) from dzhzhuti"
                                      u" INNER JOIN dmb on dzhzhuti.dm=dmb.dm"_s)
                                .value(0)
                                .toInteger());
}

void ThemeTable::xianshizhutigu(const QString& theme) {
    const Activity activity(theme == allStocks ? u"读取行情列表"_s : u"读取主题个股"_s);
    if (!fillStocks(theme)) {
        dialogs_.tell(u"没有找到数据！"_s);
    }
}

void ThemeTable::refreshStocks() {
    if (shownStocks_) {
        const Activity activity(u"读取主题个股"_s);
        fillStocks(*shownStocks_);
    }
}

bool ThemeTable::fillStocks(QString theme) {
    const bool same = shownStocks_ == theme;
    shownStocks_ = theme;
    Connection connection = stores_.main.open();
    const QString time = quoteTimeOrDelisted(connection);
    Recordset stocks(connection,
                     theme == allStocks ? allStocksQuery(time) : membersQuery(theme, time));
    const GridFill fill(stocks_,
                        same ? GridFill::Rows::ofTheSameList : GridFill::Rows::ofAnotherList);
    // Cleared in any case: a stock without a theme must not show the name of an earlier row.
    stocks_.clear();
    if (stocks.count() > 0) {
        tianchongbiao(stocks, stocks_, 1);
        setStockWidths(stocks_, stocks.fieldCount());
        colourStocks(stocks_, stocks.fieldCount());
    } else {
        stocks_.setRows(1);
        stocks_.setCols(1);
    }
    return stocks.count() > 0;
}

void ThemeTable::searchByCode(const QString& code) {
    const Activity activity(u"按代码查找主题"_s);
    const bool found =
        fillSearch({u"select  zhutiname as 主题名称,avg(zhangfu) as 涨幅,count(*) as 只数 from"
                    u" dzhzhuti AS dzhzhuti1 INNER JOIN dmb AS dmb1 on dzhzhuti1.dm=dmb1.dm"
                    u"  where dmb1.dm like "_s +
                        quoted(u'*' + code.toUpper() + u'*') +
                        u" group by zhutiname  order by 涨幅 desc,zhutiname"_s,
                    {500, 1600, 1000, 600}});
    if (!found) {
        dialogs_.tell(u"此代码没有找到主题！"_s);
        return;
    }
    showFirstTheme(code);
}

void ThemeTable::searchByName(const QString& part) {
    const Activity activity(u"按名称查找主题"_s);
    const bool found = fillSearch(
        {u"select  zhutiname as 主题名称,avg(zhangfu) as 涨幅,count(*) as 只数,"
         u"max(guanzhudu) as 关注度,max(datetime(ztktime)) as 添加时间 from dzhzhuti"
         u" AS dzhzhuti1 INNER JOIN dmb AS dmb1 on dzhzhuti1.dm=dmb1.dm"
         u"  where zhutiname like "_s +
             quoted(u'*' + part + u'*') + u" group by zhutiname  order by 涨幅 desc,zhutiname"_s,
         {500, 1600, 1000, 600, 900, 2000}});
    if (!found) {
        dialogs_.tell(u"没有找到包含 "_s + part + u" 的主题！"_s);
        return;
    }
    showFirstTheme(part);
}

bool ThemeTable::fillSearch(const Search& search) {
    Connection connection = stores_.main.open();
    const bool found = fillFound(connection, search, GridFill::Rows::ofAnotherList);
    if (found) {
        search_ = search;
    }
    return found;
}

// The list that is shown stays where none is found.
bool ThemeTable::fillFound(Connection& connection, const Search& search, GridFill::Rows rows) {
    Recordset found(connection, search.query);
    if (found.count() > 0) {
        const GridFill fill(themes_, rows);
        themes_.clear();
        tianchongbiao(found, themes_, 1);
        themes_.setColWidths(search.widths);
        colourThemes(themes_);
    }
    return found.count() > 0;
}

void ThemeTable::showFirstTheme(const QString& searched) {
    xianshizhutigu(searched.isEmpty() ? allStocks : themes_.textMatrix(1, 1));
}

}  // namespace guanchao
