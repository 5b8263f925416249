// A poll of the alarm engine without the network: 99 stocks, 20 theme monitors of 15 members and 50
// stock monitors, none of which fires. Both sides open the store once for the poll and once for its
// batch of quotes.
#include "monitor/alarm_engine.h"

#include "bench/bare_store.h"
#include "bench/compare.h"
#include "bench/market.h"
#include "tests/support/fake_alarm_screen.h"
#include "tests/support/fakes.h"
#include "tests/support/quote_reply.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int stockCount = 99;
constexpr int themeCount = 20;
constexpr int memberCount = 15;
constexpr int stockMonitorCount = 50;

QString codeOf(int stock) {
    return u"SH%1"_s.arg(600000 + stock % stockCount);
}

QString themeOf(int theme) {
    return u"监控主题%1"_s.arg(theme);
}

void setUpMonitors() {
    Connection store = wholeMarket().main.open();
    Transaction transaction(store);
    for (const QString& table : {u"jiankonghq"_s, u"zhutijiankong"_s, u"gegujiankong"_s}) {
        store.execute(u"delete from "_s + table);
    }
    store.execute(u"delete from dzhzhuti where zhutiname like '监控主题*'"_s);
    store.execute(u"update tempcanshu set jiankongpinlu=0"_s);
    for (int at = 0; at < stockCount; ++at) {
        store.execute(u"insert into jiankonghq(dm) values('%1')"_s.arg(codeOf(at)));
    }
    for (int theme = 0; theme < themeCount; ++theme) {
        store.execute(
            u"insert into zhutijiankong(zhutiname,bijiaofu,baojinzhi) values('%1','>',90)"_s.arg(
                themeOf(theme)));
        for (int at = 0; at < memberCount; ++at) {
            store.execute(u"insert into dzhzhuti(zhutiname,dm) values('%1','%2')"_s.arg(
                themeOf(theme), codeOf(theme * memberCount + at)));
        }
    }
    for (int at = 0; at < stockMonitorCount; ++at) {
        store.execute(
            u"insert into gegujiankong(dm,leixin,bijiaofu,baojinzhi) values('%1','涨幅','>',90)"_s
                .arg(codeOf(at)));
    }
    transaction.commit();
}

// The statements of the batch of quotes, which runs on a connection of its own.
QStringList quoteStatements() {
    QStringList statements = {u"begin immediate"_s};
    for (int at = 0; at < stockCount; ++at) {
        statements
            << u"update jiankonghq set sp=10.5,zhangfu=5,zhangjine=0.5,totalsl=1,totaljine=1,"
               u"newhqtime='2026-11-24 10:00:00' where dm='"_s +
                   codeOf(at) + u"'"_s;
    }
    return statements << u"commit"_s;
}

QString quoteQuery(const QString& dm) {
    return u"select  dm,sp,zhangjine,zhangfu from jiankonghq  where dm='"_s + dm + u"'"_s;
}

// The statements of the rest of the poll, after the codes of the list.
QStringList judgeStatements() {
    QStringList statements = {
        u"select  zhutiname,baojinzhi,bijiaofu,yinyue,tanchuform,zhangfu from zhutijiankong"_s};
    for (int theme = 0; theme < themeCount; ++theme) {
        statements << u"select  dm,jc from dzhzhuti  where zhutiname='"_s + themeOf(theme) + u"'"_s;
        for (int at = 0; at < memberCount; ++at) {
            statements << quoteQuery(codeOf(theme * memberCount + at));
        }
        statements << u"update zhutijiankong set zhangfu=5 where zhutiname='"_s + themeOf(theme) +
                          u"'"_s;
    }
    statements << u"select  dm,jc,leixin,bijiaofu,baojinzhi,yinyue,tanchuform,sp,zhangfu from"
                  u" gegujiankong"_s;
    for (int at = 0; at < stockMonitorCount; ++at) {
        statements << quoteQuery(codeOf(at))
                   << u"update gegujiankong set sp=10.5,zhangfu=5 where dm='"_s + codeOf(at) +
                          u"'"_s;
    }
    return statements;
}

void runAll(BareStore& store, const QStringList& statements) {
    for (const QString& statement : statements) {
        store.run(statement);
    }
}

void monitorPoll(benchmark::State& state) {
    setUpMonitors();
    const Stores& stores = wholeMarket();
    QHash<QString, double> prices;
    for (int at = 0; at < stockCount; ++at) {
        prices.insert(codeOf(at).toLower(), 10.5);
    }
    Globals globals;
    globals.jiankongkaiqi = 1;
    FakeClock clock;
    FakeFailures failures;
    FakeHttp http;
    std::optional<QByteArray> reply;
    http.answer = [&](const QString& path) {
        if (!reply) {
            reply = quoteReply(path, prices);
        }
        return reply;
    };
    QuoteFeed feed(stores, globals, clock, QuoteSource(http, clock, {Service()}));
    FakeAlarmScreen screen;
    AlarmEngine engine(stores, globals, clock, feed, failures, screen);
    const QStringList quotes = quoteStatements();
    const QStringList judging = judgeStatements();
    compare(
        state,
        [&] {
            BareStore store(stores.main.path);
            store.run(u"select  jiankongpinlu from tempcanshu"_s);
            store.run(u"select dm from jiankonghq"_s);
            {
                BareStore batch(stores.main.path);
                runAll(batch, quotes);
            }
            runAll(store, judging);
        },
        [&] { engine.tick(); });
}
BENCHMARK(monitorPoll)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(40);

}  // namespace

}  // namespace guanchao
