// A theme of 100 stocks against the market over 90 days, all of them in the local table.
#include "research/theme_history.h"

#include <QTemporaryDir>

#include "base/values.h"
#include "bench/bare_store.h"
#include "bench/compare.h"
#include "store/bound_insert.h"
#include "store/prepared_stores.h"
#include "tests/support/fakes.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int members = 100;
constexpr int cachedStocks = 1000;
const QDate firstDay(2026, 8, 24);  // a Monday
const QDate lastDay(2026, 11, 20);  // a Friday

QString code(int number) {
    return u"SH%1"_s.arg(600000 + number);
}

void fill(const StoreFile& main) {
    createStore(main.path, main.key, schemaText(Schema::main));
    Connection store = main.open();
    Transaction transaction(store);
    BoundInsert rows(store, u"insert into geguhq values(?,?,?,?)"_s);
    BoundInsert themes(store, u"insert into dzhzhuti(zhutiname,dm) values('主题',?)"_s);
    for (int at = -1; at < cachedStocks; ++at) {
        const QString dm = at < 0 ? u"SH000001"_s : code(at);
        for (QDate day = firstDay; day <= lastDay; day = day.addDays(1)) {
            if (day.dayOfWeek() <= Qt::Friday) {
                const QString gain = numberText((day.day() + at) % 21 / 10.0 - 1);
                rows.row({dm, timeText(day), gain, u"10.5"_s});
            }
        }
        if (at >= 0 && at < members) {
            themes.row({dm});
        }
    }
    transaction.commit();
}

void bareUpdate(BareStore& store, const QString& dm) {
    store.run(u"select  max(datetime(riqi)) as maxrq  FROM geguhq where dm='"_s + dm + u"'"_s);
    store.run(u"select  min(datetime(riqi)) as minrq  FROM geguhq where dm='"_s + dm + u"'"_s);
}

void bareDay(BareStore& store, const QString& day) {
    store.run(u"insert into zhutidapanhq(riqi,dapanzhangfu,dapansp) values('"_s + day +
              u"',0.5,'10.5')"_s);
    store.run(
        u"select  avg(zhangfu) as zhutizhangfu from dzhzhuti AS dzhzhuti1 INNER JOIN geguhq AS"
        u" geguhq1 on dzhzhuti1.dm=geguhq1.dm where dzhzhuti1.zhutiname='主题' and"
        u" datetime(geguhq1.riqi)='"_s +
        day + u"'"_s);
    store.run(
        u"update zhutidapanhq set zhutiname='主题',zhutizhangfu=0.5 where datetime(riqi)='"_s +
        day + u"'"_s);
}

void bareComparison(const QString& path) {
    BareStore store(path);
    bareUpdate(store, u"SH000001"_s);
    store.run(u"select distinct dm  FROM dzhzhuti where zhutiname='主题'"_s);
    for (int at = 0; at < members; ++at) {
        bareUpdate(store, code(at));
    }
    store.run(u"begin immediate"_s);
    store.run(u"delete from zhutidapanhq"_s);
    store.run(
        u"select distinct dm,datetime(riqi) as riqi,zhangfu,sp  FROM geguhq where dm='SH000001'"
        u" and datetime(riqi)>='2026-08-24 00:00:00' and datetime(riqi)<='2026-11-20 00:00:00'"
        u" order by datetime(riqi) asc"_s);
    for (QDate day = firstDay; day <= lastDay; day = day.addDays(1)) {
        if (day.dayOfWeek() <= Qt::Friday) {
            bareDay(store, timeText(day));
        }
    }
    store.run(u"commit"_s);
    store.run(
        u"select riqi as 日期,zhutiname as 主题名称,zhutizhangfu as 主题涨幅,dapanzhangfu as"
        u" 大盘涨幅,zhutizhangfu-dapanzhangfu as 涨幅差,dapansp as 大盘指数 from zhutidapanhq"
        u" order by datetime(riqi) desc"_s);
}

void themeHistory(benchmark::State& state) {
    const QTemporaryDir folder;
    const Stores stores = storesIn(applicationFolder(folder.path()));
    fill(stores.main);
    Globals globals;
    FakeClock clock;
    FakeDialogs dialogs;
    FakeHttp http;
    AskedHistory asked;
    ResultGrid grid;
    ThemeHistory history(stores, globals, clock, dialogs, PastPrices{{http, clock, {}}, {http, {}}},
                         asked, grid, [](const ThemeHistoryStep&) {});
    const DateTexts first = dateTexts(firstDay);
    const DateTexts last = dateTexts(lastDay);
    compare(
        state, [&] { bareComparison(stores.main.path); },
        [&] { QCoro::waitFor(history.compare(first, last, u"主题"_s, {})); });
}
BENCHMARK(themeHistory)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

}  // namespace

}  // namespace guanchao
