// Rewriting a big theme, and the list of a long watchlist.
#include "themes/theme_editing.h"

#include <QTemporaryDir>

#include "bench/bare_store.h"
#include "bench/compare.h"
#include "bench/market.h"
#include "store/recordset.h"
#include "tests/support/fakes.h"
#include "themes/watchlist.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

struct Stock {
    QString dm;
    QString jc;
};

QList<Stock> stocksOfMarket(int count) {
    Connection store = wholeMarket().main.open();
    QList<Stock> stocks;
    for (Recordset codes(store,
                         u"select dm,jc from dmb where dm not in ('SH000300','SH000001',"
                         u"'SZ399001') order by dm limit "_s +
                             QString::number(count));
         !codes.atEnd(); codes.moveNext()) {
        stocks << Stock{codes.value(0).toText(), codes.value(1).toText()};
    }
    return stocks;
}

void rewriteTheme(benchmark::State& state) {
    const QString time = u"2026-11-24 10:00:00"_s;
    const QList<Stock> stocks = stocksOfMarket(500);
    ThemeFields fields{u"大主题"_s, QString(), u"3"_s};
    for (const Stock& stock : stocks) {
        fields.codes += stock.dm + u',';
    }
    FakeClock clock;
    FakeDialogs dialogs;
    const QTemporaryDir kept;
    Removals removals(kept.filePath(u"kept/"_s));
    Edits edits(removals);
    ThemeEditing editing(wholeMarket(), clock, dialogs, edits);
    compare(
        state,
        [&] {
            BareStore store(wholeMarket().main.path);
            store.run(u"begin immediate"_s);
            store.run(u"delete from  dzhzhuti  where  zhutiname='大主题'"_s);
            for (const Stock& stock : stocks) {
                store.run(u"select dm,jc from dmb  where dm='"_s + stock.dm + u"'"_s);
                store.run(
                    u"insert into dzhzhuti(zhutiname,dm,jc,ztktime,guanzhudu) values('大主题','"_s +
                    stock.dm + u"','"_s + stock.jc + u"','"_s + time + u"',3)"_s);
            }
            store.run(u"update tempcanshu set xiugaizhutitime='"_s + time + u"'"_s);
            store.run(u"commit"_s);
        },
        [&] {
            editing.rewrite(fields);
            dialogs.shown.clear();
        });
}
BENCHMARK(rewriteTheme)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(40);

void listWatchlist(benchmark::State& state) {
    Connection store = wholeMarket().main.open();
    store.execute(u"delete from zixuangu"_s);
    Transaction transaction(store);
    for (const Stock& stock : stocksOfMarket(1000)) {
        store.execute(u"insert into zixuangu(dm,jc) values('"_s + stock.dm + u"','"_s + stock.jc +
                      u"')"_s);
    }
    transaction.commit();
    FakeDialogs dialogs;
    const QTemporaryDir kept;
    Removals removals(kept.filePath(u"kept/"_s));
    Watchlist watchlist(wholeMarket(), dialogs, removals);
    ResultGrid grid;
    compare(
        state,
        [&] {
            BareStore(wholeMarket().main.path)
                .run(
                    u"select dmb1.dm as 代码,dmb1.jc as 简称,sp as 收盘,zhangjine as 涨跌,"
                    u"zhangfu as 涨幅,kp as 开盘,zg as 最高,zd as 最低,totalsl as 成交量,"
                    u"totaljine as 成交金额,datetime(newhqtime) as 行情时间,(select"
                    u" group_concat(tiaojian,'，') from (select leixin||bijiaofu||"
                    u"printf('%.15g',baojinzhi) as tiaojian from gegujiankong"
                    u" where gegujiankong.dm=dmb1.dm order by rowid)) as 监控,beizhu as 备注"
                    u" from dmb AS dmb1,zixuangu  on dmb1.dm=zixuangu.dm left join gegubeizhu on"
                    u" gegubeizhu.dm=dmb1.dm left join zixuanshunxu on zixuanshunxu.dm=dmb1.dm"
                    u" and zixuanshunxu.zu=''   order by zhangfu desc,zixuangu.rowid"_s);
        },
        [&] { watchlist.list(grid); });
}
BENCHMARK(listWatchlist)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(100);

}  // namespace

}  // namespace guanchao
