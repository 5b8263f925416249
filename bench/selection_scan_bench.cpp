// 选历年主题 over the history of 2,500 stocks, 500 days and 300 themes, over one that came without
// indexes, and anew over one that is in columns already. Both sides begin with empty tables, which
// they empty within their time. Ten years of the whole market, which take minutes to make, are made
// in the folder that GUANCHAO_TEN_YEARS names, and stay there.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <map>

#include "bench/bare_store.h"
#include "bench/compare.h"
#include "bench/market.h"
#include "bench/statement_log.h"
#include "research/range_ranks.h"
#include "research/selection_scan.h"
#include "tests/support/fakes.h"
#include "tools/market_scale/history_scale.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr HistoryScale tenYears = {
    .stocks = 5400, .days = 2430, .themes = 600, .memberships = 40000};

struct ScanOfTheMarket {
    explicit ScanOfTheMarket(const HistoryScale& scale, bool indexed, const QString& kept = {}) {
        const QDir histories(kept.isEmpty() ? folder.path() : kept);
        stores.main.path = folder.filePath(u"dzhzhuti.mzdat"_s);
        stores.firstHistory.path = histories.filePath(u"first.db3"_s);
        stores.secondHistory.path = histories.filePath(u"second.db3"_s);
        QFile::copy(wholeMarket().main.path, stores.main.path);
        if (!QFileInfo::exists(stores.firstHistory.path)) {
            makeHistoryScale(stores.firstHistory, stores.secondHistory, scale, indexed);
        }
    }

    // As by a window that has just been opened.
    void readAndScanAll() {
        emptyTables();
        QCoro::waitFor(
            SelectionScan(stores, globals, dialogs, run, std::make_shared<HistoryShelf>())
                .chooseThemes({}));
    }

    // As by one that has scanned before.
    void scanAll() {
        emptyTables();
        QCoro::waitFor(scan.chooseThemes({}));
    }

    void emptyTables() {
        Connection main = stores.main.open();
        main.execute(u"delete from xuanticai"_s);
        main.execute(u"delete from xuanticaigu"_s);
    }

    QTemporaryDir folder;
    Stores stores;
    Globals globals;
    FakeDialogs dialogs;
    ResearchRun run{[](const ResearchProgress&) {}};
    SelectionScan scan{stores, globals, dialogs, run, std::make_shared<HistoryShelf>()};
};

void compareWithStatements(benchmark::State& state, ScanOfTheMarket& it,
                           const std::function<void()>& scan) {
    QStringList statements;
    {
        const StatementLog log;
        scan();
        statements = StatementLog::statements();
    }
    const QDir histories = QFileInfo(it.stores.firstHistory.path).dir();
    const auto bareLoop = [&] {
        std::map<QString, BareStore> stores;
        for (const QString& line : statements) {
            const qsizetype mark = line.indexOf(u": "_s);
            const QString name = line.first(mark);
            const QDir& folder = QFileInfo(it.stores.main.path).fileName() == name
                                     ? QDir(it.folder.path())
                                     : histories;
            const auto store = stores.try_emplace(name, folder.filePath(name)).first;
            store->second.run(line.sliced(mark + 2));
        }
    };
    compare(state, bareLoop, scan);
}

void themesOfTheYears(benchmark::State& state) {
    ScanOfTheMarket it({}, true);
    compareWithStatements(state, it, [&] { it.readAndScanAll(); });
}
BENCHMARK(themesOfTheYears)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

void themesOfTheYearsWithoutIndexes(benchmark::State& state) {
    ScanOfTheMarket it({}, false);
    measure(state, [&] { it.readAndScanAll(); });
}
BENCHMARK(themesOfTheYearsWithoutIndexes)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

void themesOfTheYearsAnew(benchmark::State& state) {
    ScanOfTheMarket it({}, true);
    it.scanAll();
    compareWithStatements(state, it, [&] { it.scanAll(); });
}
BENCHMARK(themesOfTheYearsAnew)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

// What the first history takes to read, alone.
void tenYearsRead(benchmark::State& state, const QString& folder) {
    const ScanOfTheMarket it(tenYears, true, folder);
    double bytes = 0;
    measure(state, [&] {
        Connection first = it.stores.firstHistory.open();
        const MarketColumns market(first, [](int, int) {});
        bytes = static_cast<double>(market.bytes());
    });
    state.counters["bytes"] = bytes;
}

void tenYearsScan(benchmark::State& state, const QString& folder) {
    ScanOfTheMarket it(tenYears, true, folder);
    state.counters["first_ms"] = seconds([&] { it.scanAll(); }) * 1000;
    compareWithStatements(state, it, [&] { it.scanAll(); });
}

// All themes beside each other over all of the days.
void tenYearsRanks(benchmark::State& state, const QString& folder) {
    const ScanOfTheMarket it(tenYears, true, folder);
    const RangeQuestion all = {RangeSource::history, QDate(2000, 1, 1), QDate(2099, 12, 31)};
    measure(state, [&] { rankThemes(it.stores, all, [] {}); });
}

[[maybe_unused]] const bool hasTenYears = [] {
    const QString folder = qEnvironmentVariable("GUANCHAO_TEN_YEARS");
    if (folder.isEmpty()) {
        return false;
    }
    const auto add = [&](const char* name, void (*bench)(benchmark::State&, const QString&)) {
        benchmark::RegisterBenchmark(
            name, [bench, folder](benchmark::State& state) { bench(state, folder); })
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond)
            ->Iterations(1);
    };
    add("tenYears/read", tenYearsRead);
    add("tenYears/scan", tenYearsScan);
    add("tenYears/ranks", tenYearsRanks);
    return true;
}();

}  // namespace

}  // namespace guanchao
