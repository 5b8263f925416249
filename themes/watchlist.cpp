#include "themes/watchlist.h"

#include "base/activity.h"
#include "base/values.h"
#include "grid/tianchongbiao.h"
#include "services/delisted.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

Watchlist::Watchlist(const Stores& stores, Dialogs& dialogs) : stores_(stores), dialogs_(dialogs) {}

void Watchlist::list(ResultGrid& grid) const {
    const Activity activity(u"读取自选股"_s);
    Connection store = stores_.main.open();
    Recordset stocks(
        store,
        u"select dmb1.dm as 代码,dmb1.jc as 简称,sp as 收盘,zhangjine as 涨跌,"
        u"zhangfu as 涨幅,kp as 开盘,zg as 最高,zd as 最低,totalsl as 成交量,"
        u"totaljine as 成交金额,"_s +
            quoteTimeOrDelisted(store) +
            u" as 行情时间 from dmb AS dmb1,"
            u"zixuangu  on dmb1.dm=zixuangu.dm   order by zhangfu desc,zixuangu.rowid"_s);
    const GridFill fill(grid);
    // Cleared first: a stock without a quote must not show the time of an earlier row.
    grid.clear();
    tianchongbiao(stocks, grid, 1);
    constexpr int standard = ResultGrid::standardWidth;
    grid.setColWidths(
        {500, 1200, 1200, 800, 800, 900, standard, standard, standard, 1500, 1500, 1900});
}

QCoro::Task<bool> Watchlist::addTyped(std::stop_token stop) {
    const QString typed = co_await dialogs_.input(stop, u"请输入股票代码,示例:SH600585"_s,
                                                  u"添加自选股:"_s, u"SH6"_s);
    co_return !typed.isEmpty() && add(typed.toUpper(), QString());
}

bool Watchlist::add(const QString& dm, const QString& jc) {
    const Activity activity(u"添加自选股"_s);
    {
        Connection store = stores_.main.open();
        const Recordset present(store, u"select dm from zixuangu  where dm="_s + quoted(dm));
        if (present.count() > 0) {
            dialogs_.tell(u"此股票已在自选股中。"_s);
            return false;
        }
        store.execute(u"insert into zixuangu(dm,jc) values("_s + quoted(dm) + u',' + quoted(jc) +
                      u")"_s);
    }
    dialogs_.tell(u"添加自选股'"_s + dm + u"'完成!"_s);
    return true;
}

void Watchlist::remove(const QString& dm, const QString& jc) {
    const Activity activity(u"删除自选股"_s);
    stores_.main.open().execute(u"delete from zixuangu where dm="_s + quoted(dm));
    dialogs_.tell(u"删除自选股'"_s + jc + u"'完成!"_s);
}

}  // namespace guanchao
