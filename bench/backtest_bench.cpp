// 回测实验室 over the history of 2,500 stocks, 500 days and 300 themes: a rule on a history that is
// read for it, one on the columns that stand there, and a sweep over 100 rules. One rule on the
// columns stands beside a second.
#include <QTemporaryDir>

#include "bench/compare.h"
#include "bench/market.h"
#include "research/laboratory/laboratory.h"
#include "tools/market_scale/history_scale.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double mostMilliseconds = 1000;

struct LaboratoryOfTheMarket {
    LaboratoryOfTheMarket() {
        stores = wholeMarket();
        stores.firstHistory = {folder.filePath(u"first.db3"_s), {}};
        stores.secondHistory = {folder.filePath(u"second.db3"_s), {}};
        makeHistoryScale(stores.firstHistory, stores.secondHistory, {}, true);
    }

    void test(Laboratory& of) { QCoro::waitFor(of.test(rule, {})); }

    QTemporaryDir folder;
    Stores stores;
    BacktestRule rule;
    ResearchRun run{[](const ResearchProgress&) {}};
    Laboratory laboratory{stores, run, std::make_shared<HistoryShelf>()};
};

void besideASecond(benchmark::State& state, const std::function<void()>& program) {
    measure(state, program);
    state.counters["limit_ms"] = mostMilliseconds;
    state.counters["ratio"] = state.counters["program_ms"].value / mostMilliseconds;
}

void firstRule(benchmark::State& state) {
    LaboratoryOfTheMarket it;
    measure(state, [&] {
        Laboratory fresh(it.stores, it.run, std::make_shared<HistoryShelf>());
        it.test(fresh);
    });
}
BENCHMARK(firstRule)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

void oneRule(benchmark::State& state) {
    LaboratoryOfTheMarket it;
    it.test(it.laboratory);
    besideASecond(state, [&] { it.test(it.laboratory); });
}
BENCHMARK(oneRule)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

void sweepOfRules(benchmark::State& state) {
    LaboratoryOfTheMarket it;
    it.test(it.laboratory);
    const SweepAxis days{ruleField(u"持有天数"_s), 1, 10, 1};
    const SweepAxis stops{ruleField(u"止损"_s), 1, 10, 1};
    measure(state,
            [&] { QCoro::waitFor(it.laboratory.sweep(it.rule, days, std::optional(stops), {})); });
}
BENCHMARK(sweepOfRules)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

}  // namespace guanchao
