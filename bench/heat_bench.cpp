// The rankings of themes by their news: 600 themes with 400 days of counts.
#include <QTemporaryDir>

#include "base/values.h"
#include "bench/bare_store.h"
#include "bench/compare.h"
#include "heat/heat_ranking.h"
#include "heat/heat_reading.h"
#include "store/bound_insert.h"
#include "store/prepared_stores.h"
#include "tests/support/fakes.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int themeCount = 600;
constexpr int dayCount = 400;

QStringList countsOf(int theme, const QDateTime& day, int at) {
    const auto figure = [&](int factor) {
        return QString::number((theme * factor + at * 31) % 997 + 1);
    };
    const auto growth = [&](int factor) {
        return QString::number((theme * factor + at * 17) % 4001 / 20.0 - 100);
    };
    return {timeText(day), u"题材"_s + QString::number(theme),
            figure(7),     growth(13),
            figure(11),    growth(19),
            figure(23),    growth(29),
            u"30"_s};
}

// A plain store: the bare loop below opens it without a key.
const Stores& heatStores() {
    static const QTemporaryDir folder;
    static const Stores stores = [] {
        Stores made;
        made.heat.path = folder.filePath(u"caijiqi.mzdat"_s);
        createStore(made.heat.path, {}, schemaText(Schema::heat));
        Connection store = made.heat.open();
        Transaction transaction(store);
        BoundInsert counts(store, u"insert into xinwenshul values(?,?,?,?,?,?,?,?,?,0)"_s);
        for (int at = 0; at < dayCount; ++at) {
            const QDateTime day = QDateTime(QDate(2025, 1, 1), QTime(18, 0)).addDays(at);
            for (int theme = 0; theme < themeCount; ++theme) {
                counts.row(countsOf(theme, day, at));
            }
        }
        transaction.commit();
        return made;
    }();
    return stores;
}

const QString columns =
    u"select date(riqi) as 日期,zhutiname as 主题名称,onecishu as 一日数量,onezhangfu as"
    u" 一日涨幅,allcishu as 全部数量,allzhangfu as 全部涨幅,zdycishu as 自定义数量,zdyzhangfu as"
    u" 自定义涨幅,zdytianshu as 自定义天数 from xinwenshul"_s;

struct Ranking {
    const Stores& stores = heatStores();
    Globals globals;
    FakeClock clock;
    FakeShell shell;
    ResultGrid ranking;
    ResultGrid history;
    HeatRanking news{stores, globals, clock, shell, themeNews(), ranking, history};
};

void compareRanking(benchmark::State& state, bool all, const QString& statement) {
    Ranking it;
    compare(
        state,
        [&] {
            BareStore store(it.stores.heat.path);
            store.run(
                u"select date(riqi) as riqi from xinwenshul order by datetime(riqi) desc"
                u" limit 1"_s);
            store.run(statement);
        },
        [&] { it.news.showRanking(all); });
}

void newsOfTheLatestDay(benchmark::State& state) {
    compareRanking(
        state, false,
        columns + u" where date(riqi)='2026-02-04' order by allzhangfu desc,zhutiname "_s);
}
BENCHMARK(newsOfTheLatestDay)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(100);

void newsOfAllThemes(benchmark::State& state) {
    compareRanking(
        state, true,
        columns +
            u" where rowid in (select (select rowid from xinwenshul as days where"
            u" days.zhutiname is items.zhutiname order by date(riqi) desc,rowid desc limit 1) from"
            u" (select distinct zhutiname from xinwenshul) as items) group by zhutiname  order by"
            u" date(riqi) desc,zhutiname "_s);
}
BENCHMARK(newsOfAllThemes)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(40);

// What Form25 reads while it opens: in its worker, the latest day and the small lines of all
// themes.
void newsWithTheirLastDays(benchmark::State& state) {
    const Stores& stores = heatStores();
    const HeatSubject themes = themeNews();
    compare(
        state,
        [&] {
            BareStore store(stores.heat.path);
            store.run(columns +
                      u" where date(riqi)='2026-02-04' order by allzhangfu desc,zhutiname "_s);
            store.run(
                u"select date(riqi),zhutiname,onecishu from xinwenshul where"
                u" datetime(riqi)>='2026-01-06 00:00:00' order by date(riqi),rowid"_s);
        },
        [&] { benchmark::DoNotOptimize(readHeat(stores.heat, themes, {})); });
}
BENCHMARK(newsWithTheirLastDays)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(40);

}  // namespace

}  // namespace guanchao
