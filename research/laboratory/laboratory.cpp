#include "research/laboratory/laboratory.h"

#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// What a job reads.
struct Sources {
    Sources(const Stores& stores, std::shared_ptr<HistoryShelf> shelf, ResearchWork& work)
        : reports(reportDates(stores.main)),
          loan(std::move(shelf)),
          history(stores, loan.columns(), work) {}

    std::vector<ReportDate> reports;
    HistoryLoan loan;
    LaboratoryHistory history;
};

void nameStocks(BacktestResult& result, const StoreFile& main) {
    Connection store = main.open();
    const QHash<QString, QString> names = shortNames(store);
    for (Trade& trade : result.trades) {
        trade.jc = names.value(trade.dm);
    }
    for (ReportReturn& it : result.returns) {
        it.jc = names.value(it.dm);
    }
}

}  // namespace

template <typename Result, typename Job>
QCoro::Task<std::optional<Result>> Laboratory::carryOut(QString name, Job job,
                                                        std::stop_token stop) {
    const auto given = std::make_shared<std::optional<Result>>();
    const ResearchRun::Job inThread = [stores = stores_, shelf = shelf_, job, given](
                                          ResearchWork& work, Activity&) {
        Sources sources(stores, shelf, work);
        work.showStep({});
        *given = job(sources, work);
        return true;
    };
    co_await run_.run(name, inThread, stop);
    std::optional<Result> result = std::move(*given);
    co_return result;
}

QCoro::Task<std::optional<BacktestResult>> Laboratory::test(BacktestRule rule,
                                                            std::stop_token stop) {
    const auto job = [rule, main = stores_.main](Sources& sources, ResearchWork& work) {
        BacktestResult result = backtest(rule, sources.history, sources.reports, work);
        if (rule.source == 1) {
            result.returns = reportReturns(sources.history, sources.reports);
        }
        nameStocks(result, main);
        return result;
    };
    auto result = co_await carryOut<BacktestResult>(u"回测"_s, job, stop);
    co_return result;
}

QCoro::Task<std::optional<QList<BacktestResult>>> Laboratory::compare(QList<BacktestRule> rules,
                                                                      std::stop_token stop) {
    const auto job = [rules](Sources& sources, ResearchWork& work) {
        QList<BacktestResult> results;
        work.begin(static_cast<int>(rules.size()));
        for (const BacktestRule& rule : rules) {
            results << backtest(rule, sources.history, sources.reports, work);
            work.oneDone();
        }
        return results;
    };
    auto result = co_await carryOut<QList<BacktestResult>>(u"比较规则"_s, job, stop);
    co_return result;
}

QCoro::Task<std::optional<SweepResult>> Laboratory::sweep(BacktestRule rule, SweepAxis across,
                                                          std::optional<SweepAxis> down,
                                                          std::stop_token stop) {
    const auto job = [rule, across, down](Sources& sources, ResearchWork& work) {
        return guanchao::sweep(rule, across, down, sources.history, sources.reports, work);
    };
    auto result = co_await carryOut<SweepResult>(u"扫描规则"_s, job, stop);
    co_return result;
}

}  // namespace guanchao
