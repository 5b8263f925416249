// The search over the selected theme-days: 400,000 stock rows of 300 themes on 500 days, until its
// list stands on the screen.
#include "research/selection_search.h"

#include <QApplication>
#include <QTemporaryDir>

#include "bench/bare_store.h"
#include "bench/compare.h"
#include "grid/grid_view.h"
#include "store/prepared_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Ten themes a day with eighty stocks each; figures from products and remainders, so that each run
// has the same ones.
const QString fillThemeDays =
    u"with recursive n(t) as (select 0 union all select t+1 from n where t<4999)"
    u" insert into xuanticai select strftime('%Y-%m-%d 00:00:00','2015-01-01','+'||(t/10)||' "
    u"days'),"
    u"'主题'||(t*7%300),(t*31%60)/10.0-1,23+t*13%8,t%5,80,(t*17%50)/10.0-2,10.02 from n"_s;

const QString fillStocks =
    u"with recursive n(s) as (select 0 union all select s+1 from n where s<79)"
    u" insert into xuanticaigu select riqi,printf('SH%06d',600000+k%2500),'某股',ticai,p,p,p,"
    u"p/(0.9+k%211/1000.0),p/(0.8+k%401/1000.0),p/(0.7+k%601/1000.0),p/(0.6+k%809/1000.0),p,"
    u"1000+k%5000,1000+k%3001,p*(0.95+k%97/1000.0),p*(0.93+k%139/1000.0),p*(0.94+k%113/1000.0),"
    u"p*(0.92+k%151/1000.0),p*(0.9+k%199/1000.0),p*(0.88+k%239/1000.0),1000+k%4001"
    u" from (select riqi,ticai,(t.rowid*80+s)*7919 as k,5+(t.rowid*80+s)%1009/13.0 as p"
    u" from xuanticai t,n)"_s;

const Stores& selectedDays() {
    static const QTemporaryDir folder;
    static const Stores stores = [] {
        Stores made = storesIn(applicationFolder(folder.path()));
        createStore(made.main.path, made.main.key, schemaText(Schema::main));
        Connection store = made.main.open();
        Transaction transaction(store);
        store.execute(fillThemeDays);
        store.execute(fillStocks);
        transaction.commit();
        return made;
    }();
    return stores;
}

// The stored condition with its broken word mended, and the rule that is stored beside it.
const QString themeRule =
    u" and  ticaizhang>0 and  zhangtinshu>zonggeshu/4+2 and yizishu>-1 and dapanzhang>-10 and"
    u" touguzhangfu>9 and "_s;
const QString fewStocks =
    themeRule + u"股涨幅>9.5  and 量比>0  and  开盘涨<2  and  前3涨<0  and  前10涨<0"_s;
const QString manyStocks = themeRule + u"股涨幅>0  and 量比>0  and  开盘涨<2  and  前3涨<20"_s;

void search(benchmark::State& state, const QString& condition) {
    const Stores& stores = selectedDays();
    Globals globals;
    ResultGrid grid;
    GridView view;
    view.resize(1400, 600);
    view.setGrid(grid);
    view.show();
    SelectionSearch search(stores, globals, grid);
    SelectionQuery query;
    query.condition = condition;
    const QString statement = query.statement();
    compare(
        state, [&] { BareStore(stores.main.path).run(statement); },
        [&] {
            QCoro::waitFor(search.search(query, {}, [] {}, {}));
            QApplication::processEvents();
        });
}
BENCHMARK_CAPTURE(search, fewStocks, fewStocks)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(10);
BENCHMARK_CAPTURE(search, manyStocks, manyStocks)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);
BENCHMARK_CAPTURE(search, allStocks, QString())
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

}  // namespace

}  // namespace guanchao
