// The browser's lists and queries in a library of 100,000 articles, and the import of 20,000.
#include <QTemporaryDir>

#include "articles/article_browser.h"
#include "bench/bare_store.h"
#include "bench/compare.h"
#include "exchange/article_import.h"
#include "store/prepared_stores.h"
#include "tests/support/fakes.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int articleCount = 100000;
constexpr int importedCount = 20000;
// What a user waits for without a second thought, in milliseconds.
constexpr double importLimit = 2000;

// Ten years of articles by 40 authors, each of some 300 characters.
void fillLibrary(Connection& store, int articles, int themes) {
    const QString paragraph =
        u"板块放量上涨，龙头收于高位。上游原材料价格回落，中游毛利率修复，下游渠道去库存。"_s;
    Transaction transaction(store);
    for (int at = 0; at < articles; ++at) {
        const QString theme = u"主题"_s + QString::number(at * 7 % themes);
        store.execute(
            u"insert into wenzhang(rq,zuozhe,dalei,xiaolei,biaoti,leirong,cishu) values('%1','%2',"
            u"'%3','%4','关于(%4)的内容%5','%6',%7)"_s
                .arg(QDate(2016, 1, 1).addDays(at * 11 % 3650).toString(Qt::ISODate),
                     u"作者"_s + QString::number(at % 40), at % 3 ? u"主题"_s : u"个股"_s, theme,
                     QString::number(at), paragraph.repeated(7) + QString::number(at))
                .arg(at % 50));
    }
    transaction.commit();
}

const Stores& library() {
    static const QTemporaryDir folder;
    static const Stores stores = [] {
        Stores made = storesIn(applicationFolder(folder.path()));
        createStore(made.article.path, made.article.key, schemaText(Schema::article));
        Connection store = made.article.open();
        fillLibrary(store, articleCount, 300);
        return made;
    }();
    return stores;
}

struct Browser {
    Globals globals;
    FakeClock clock;
    FakeDialogs dialogs;
    QTemporaryDir undone;
    Removals removals{applicationFolder(undone.path())};
    ResultGrid grid;
    ArticleBrowser browser{library(), globals, clock, dialogs, removals, grid};
};

void compareQuery(benchmark::State& state, const ArticleQuery& query) {
    Browser it;
    const StoreFile& file = library().article;
    compare(
        state, [&] { runBare(file.open().handle(), query.statement()); },
        [&] { it.browser.list(query); });
}

ArticleQuery searchQuery() {
    ArticleQuery query;
    query.first = {u"2016"_s, u"1"_s, u"1"_s};
    query.last = {u"2025"_s, u"12"_s, u"31"_s};
    query.limit = u"1000"_s;
    return query;
}

void allArticles(benchmark::State& state) {
    ArticleQuery query;
    query.all = true;
    compareQuery(state, query);
}
BENCHMARK(allArticles)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(40);

void articleTitle(benchmark::State& state) {
    ArticleQuery query = searchQuery();
    query.titleWord = u"内容9999"_s;
    compareQuery(state, query);
}
BENCHMARK(articleTitle)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

void articleWords(benchmark::State& state) {
    ArticleQuery query = searchQuery();
    query.contentWords = {u"放量"_s, u"毛利率"_s, u"9999"_s};
    compareQuery(state, query);
}
BENCHMARK(articleWords)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

void articleLists(benchmark::State& state) {
    measure(state, [&] {
        Connection store = library().article.open();
        benchmark::DoNotOptimize(readArticleLists(store));
    });
}
BENCHMARK(articleLists)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

// Of one theme, into an empty library.
void articleImport(benchmark::State& state) {
    const QTemporaryDir folder;
    const Stores stores = storesIn(applicationFolder(folder.path()));
    createStore(stores.article.path, stores.article.key, schemaText(Schema::article));
    FakeDialogs dialogs;
    dialogs.picked = folder.filePath(u"wenzhang.ztb"_s);
    createStore(dialogs.picked, stores.article.key, schemaText(Schema::article));
    Connection file(dialogs.picked, stores.article.key);
    fillLibrary(file, importedCount, 1);
    ExchangeRun run([](const ShownExchange&) {});
    measure(state, [&] {
        stores.article.open().execute(u"delete from wenzhang"_s);
        QCoro::waitFor(importArticles(stores, dialogs, run, {}));
    });
    state.counters["limit_ms"] = importLimit;
    state.counters["ratio"] = state.counters["program_ms"] / importLimit;
}
BENCHMARK(articleImport)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

}  // namespace guanchao
