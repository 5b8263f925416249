// The theme table, the list of all stocks and its sorting.
#include "themes/theme_table.h"

#include <QApplication>

#include "bench/bare_store.h"
#include "bench/compare.h"
#include "bench/market.h"
#include "grid/grid_view.h"
#include "grid/sorting.h"
#include "store/recordset.h"
#include "tests/support/fakes.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString allStocksStatement =
    u"select zhutiname as 主题名称,dmb1.dm as 代码,dmb1.jc as 简称,sp as 收盘,zhangjine as 涨跌,"
    u"zhangfu as 涨幅,kp as 开盘,zg as 最高,zd as 最低,totalsl as 成交量,totaljine as 成交金额,"
    u"datetime(newhqtime) as 更新时间 from dmb AS dmb1 left JOIN  (select dm,max(zhutiname) as"
    u" zhutiname from dzhzhuti group by dm)  AS dzhzhuti1  on dmb1.dm=dzhzhuti1.dm   order by"
    u" zhangfu desc,dmb1.rowid"_s;

struct Table {
    const Stores& stores = wholeMarket();
    Globals globals;
    FakeClock clock;
    FakeDialogs dialogs;
    ResultGrid themes;
    ResultGrid stocks;
    ThemeTable table{stores, globals, clock, dialogs, themes, stocks};
};

void themeTable(benchmark::State& state) {
    Table it;
    compare(
        state,
        [&] {
            BareStore store(it.stores.main.path);
            store.run(u"select datetime(xiugaizhutitime),datetime(hqtime) from tempcanshu"_s);
            store.run(
                u"select  zhutiname as 主题名称,avg(zhangfu) as 涨幅,count(*) as 只数,"
                u"max(guanzhudu) as 关注度,max(datetime(ztktime)) as 添加时间 from dzhzhuti AS"
                u" dzhzhuti1 INNER JOIN dmb AS dmb1 on dzhzhuti1.dm=dmb1.dm where guanzhudu>0"
                u" group by zhutiname order by 涨幅 desc,zhutiname"_s);
        },
        [&] { it.table.refresh(u"0"_s, [](const UpdateLabels&) {}); });
}
BENCHMARK(themeTable)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(40);

void allStocksTable(benchmark::State& state) {
    Table it;
    compare(
        state, [&] { BareStore(it.stores.main.path).run(allStocksStatement); },
        [&] { it.table.xianshizhutigu(allStocks); });
}
BENCHMARK(allStocksTable)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(40);

// A refresh of all stocks of which 300 have another turnover, until a view shows it.
void refreshOfFewStocks(benchmark::State& state) {
    Table it;
    it.table.xianshizhutigu(allStocks);
    GridView view;
    view.setGrid(it.stocks);
    view.resize(1300, 1200);
    view.show();
    QApplication::processEvents();
    compare(
        state, [&] { BareStore(it.stores.main.path).run(allStocksStatement); },
        [&] {
            it.table.refreshStocks();
            QApplication::processEvents();
        },
        [&] {
            BareStore(it.stores.main.path)
                .run(u"update dmb set totaljine=totaljine+10000 where rowid%18=0"_s);
        });
}
BENCHMARK(refreshOfFewStocks)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(40);

void sortByGain(benchmark::State& state) {
    Table it;
    it.table.xianshizhutigu(allStocks);
    constexpr int gainColumn = 6;
    SortCode last = SortCode::none;
    measure(state, [&] { sortByHeader(it.stocks, gainColumn, {u"日期"_s}, last); });
}
BENCHMARK(sortByGain)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(100);

}  // namespace

}  // namespace guanchao
