#include "themes/watchlist.h"

#include "base/activity.h"
#include "base/values.h"
#include "grid/tianchongbiao.h"
#include "services/delisted.h"
#include "store/recordset.h"
#include "themes/watch_order.h"
#include "themes/watch_tables.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The conditions of the stock's monitors: 涨幅>5.
QString monitorsOfStock() {
    return u"(select group_concat(tiaojian,'，') from (select leixin||bijiaofu||"
           u"printf('%.15g',baojinzhi) as tiaojian from gegujiankong"
           u" where gegujiankong.dm=dmb1.dm order by rowid))"_s;
}

bool isInOwnOrder(Connection& store, const QString& list) {
    return !list.isEmpty() || (hasWatchTables(store) && hasOwnOrder(store, list));
}

QString listQuery(Connection& store, const QString& list, bool ownOrder) {
    const bool hasTables = hasWatchTables(store);
    const QString beside =
        hasTables ? u" left join gegubeizhu on gegubeizhu.dm=dmb1.dm left join zixuanshunxu on"
                    u" zixuanshunxu.dm=dmb1.dm and zixuanshunxu.zu="_s +
                        quoted(list)
                  : QString();
    return u"select dmb1.dm as 代码,dmb1.jc as 简称,sp as 收盘,zhangjine as 涨跌,"
           u"zhangfu as 涨幅,kp as 开盘,zg as 最高,zd as 最低,totalsl as 成交量,"
           u"totaljine as 成交金额,"_s +
           quoteTimeOrDelisted(store) + u" as 行情时间,"_s + monitorsOfStock() + u" as 监控,"_s +
           (hasTables ? u"beizhu"_s : u"null"_s) + u" as 备注 from dmb AS dmb1,"_s +
           membersOf(list) + u"  on dmb1.dm=zixuangu.dm"_s + andOfList(list) + beside +
           u"   order by "_s + (ownOrder ? u"weizhi is null,weizhi"_s : u"zhangfu desc"_s) +
           u",zixuangu.rowid"_s;
}

// Against the close of the day before; a stock without a quote stays plain.
void colourPrices(ResultGrid& grid, int row) {
    constexpr int price = 3;
    constexpr int change = 4;
    const double close = grid.number(row, price).value_or(0);
    const double former = close - grid.number(row, change).value_or(0);
    for (const int col : {price, 6, 7, 8}) {
        const double shown = grid.number(row, col).value_or(0);
        if (close > 0 && shown > 0) {
            grid.setCellForeColor(row, col,
                                  toTwoDecimals(shown - former) < 0 ? fallColour : riseColour);
        }
    }
}

void colourRows(ResultGrid& grid) {
    for (int row = 1; row < grid.rows(); ++row) {
        grid.setCellForeColor(row, WatchColumn::jc, stockColour);
        for (const int col : {4, 5}) {
            grid.setCellForeColor(row, col, signColour(grid, row, col));
        }
        colourPrices(grid, row);
        grid.setCellForeColor(row, WatchColumn::monitor, themeColour);
    }
}

}  // namespace

Watchlist::Watchlist(const Stores& stores, Dialogs& dialogs, Removals& removals)
    : stores_(stores), dialogs_(dialogs), removals_(removals) {}

bool Watchlist::list(ResultGrid& grid, const QString& list) {
    const Activity activity(u"读取自选股"_s);
    Connection store = stores_.main.open();
    const bool ownOrder = isInOwnOrder(store, list);
    Recordset stocks(store, listQuery(store, list, ownOrder));
    const GridFill fill(
        grid, shown_ == list ? GridFill::Rows::ofTheSameList : GridFill::Rows::ofAnotherList);
    shown_ = list;
    // Cleared first: a stock without a quote must not show the time of an earlier row.
    grid.clear();
    tianchongbiao(stocks, grid, 1);
    constexpr int standard = ResultGrid::standardWidth;
    grid.setColWidths({500, 1200, 1200, 800, 800, 900, standard, standard, standard, 1500, 1500,
                       1900, 1300, 2000});
    colourRows(grid);
    return ownOrder;
}

QCoro::Task<bool> Watchlist::addTyped(std::stop_token stop, QString list) {
    const QString typed = co_await dialogs_.input(stop, u"请输入股票代码,示例:SH600585"_s,
                                                  u"添加自选股:"_s, u"SH6"_s);
    co_return !typed.isEmpty() && add(typed.toUpper(), QString(), list);
}

bool Watchlist::add(const QString& dm, const QString& jc, const QString& list) {
    const Activity activity(u"添加自选股"_s);
    {
        Connection store = stores_.main.open();
        if (isOnList(store, list, dm)) {
            dialogs_.tell(u"此股票已在自选股中。"_s);
            return false;
        }
        addToList(store, list, dm, jc);
    }
    dialogs_.tell(u"添加自选股'"_s + dm + u"'完成!"_s);
    return true;
}

void Watchlist::remove(const QString& dm, const QString& jc, const QString& list) {
    removeRows({dm}, jc.isEmpty() ? dm : jc, list);
    dialogs_.tell(u"删除自选股'"_s + jc + u"'完成!"_s);
}

void Watchlist::removeAll(const QStringList& dms, const QString& list) {
    removeRows(dms, u"%1 只自选股"_s.arg(dms.size()), list);
}

void Watchlist::removeRows(const QStringList& dms, const QString& words, const QString& list) {
    const Activity activity(u"删除自选股"_s);
    Connection store = stores_.main.open();
    Removal removal(removals_, store, stores_.main);
    Transaction transaction(store);
    const QStringList identity =
        list.isEmpty() ? QStringList{u"dm"_s} : QStringList{u"zu"_s, u"dm"_s};
    for (const QString& dm : dms) {
        const QString row = ofList(list) + u" and dm="_s + quoted(dm);
        removal.keep({tableOf(list), identity}, row);
        store.execute(u"delete from "_s + tableOf(list) + row);
    }
    transaction.commit();
    removal.complete(watchlistPlace, words);
}

}  // namespace guanchao
