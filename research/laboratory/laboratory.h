// The runs of 回测实验室, each in a thread of its own; what they read is laid back for the
// next one.
#pragma once

#include <memory>

#include "research/history_shelf.h"
#include "research/laboratory/sweep.h"

namespace guanchao {

class Laboratory {
public:
    // `run` tells how far each is, and stops it.
    Laboratory(const Stores& stores, ResearchRun& run, std::shared_ptr<HistoryShelf> shelf)
        : stores_(stores), run_(run), shelf_(std::move(shelf)) {}

    // What came out; nothing if it was stopped. Each raises StoreError, and OperationError if the
    // run is in use.
    QCoro::Task<std::optional<BacktestResult>> test(BacktestRule rule, std::stop_token stop);
    // In the order of the rules.
    QCoro::Task<std::optional<QList<BacktestResult>>> compare(QList<BacktestRule> rules,
                                                              std::stop_token stop);
    QCoro::Task<std::optional<SweepResult>> sweep(BacktestRule rule, SweepAxis across,
                                                  std::optional<SweepAxis> down,
                                                  std::stop_token stop);

private:
    template <typename Result, typename Job>
    QCoro::Task<std::optional<Result>> carryOut(QString name, Job job, std::stop_token stop);

    const Stores& stores_;
    ResearchRun& run_;
    std::shared_ptr<HistoryShelf> shelf_;
};

}  // namespace guanchao
