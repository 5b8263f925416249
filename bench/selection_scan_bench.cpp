// 选历年主题 over the history of 2,500 stocks, 500 days and 300 themes, and over one that came
// without indexes. Both sides begin with empty tables, which they empty within their time.
#include <QFile>
#include <QTemporaryDir>
#include <map>

#include "bench/bare_store.h"
#include "bench/compare.h"
#include "bench/market.h"
#include "bench/statement_log.h"
#include "research/selection_scan.h"
#include "tests/support/fakes.h"
#include "tools/market_scale/history_scale.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

struct ScanOfTheMarket {
    explicit ScanOfTheMarket(bool indexed) {
        stores.main.path = folder.filePath(u"dzhzhuti.mzdat"_s);
        stores.firstHistory.path = folder.filePath(u"first.db3"_s);
        stores.secondHistory.path = folder.filePath(u"second.db3"_s);
        QFile::copy(wholeMarket().main.path, stores.main.path);
        makeHistoryScale(stores.firstHistory, stores.secondHistory, {}, indexed);
    }

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
    SelectionScan scan{stores, globals, dialogs, run};
};

void themesOfTheYears(benchmark::State& state) {
    ScanOfTheMarket it(true);
    QStringList statements;
    {
        const StatementLog log;
        it.scanAll();
        statements = StatementLog::statements();
    }
    const auto bareLoop = [&] {
        std::map<QString, BareStore> stores;
        for (const QString& line : statements) {
            const qsizetype mark = line.indexOf(u": "_s);
            const QString name = line.first(mark);
            const auto store = stores.try_emplace(name, it.folder.filePath(name)).first;
            store->second.run(line.sliced(mark + 2));
        }
    };
    compare(state, bareLoop, [&] { it.scanAll(); });
}
BENCHMARK(themesOfTheYears)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

void themesOfTheYearsWithoutIndexes(benchmark::State& state) {
    ScanOfTheMarket it(false);
    measure(state, [&] { it.scanAll(); });
}
BENCHMARK(themesOfTheYearsWithoutIndexes)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

}  // namespace

}  // namespace guanchao
