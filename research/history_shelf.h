// The day histories in columns between two runs, for all windows that read them: a run takes them
// and lays them back. One that finds them taken reads columns of its own.
#pragma once

#include <memory>
#include <mutex>

#include "research/history_columns.h"

namespace guanchao {

class HistoryShelf {
public:
    // From any thread. Never null.
    std::unique_ptr<HistoryColumns> take();
    // The larger ones stay, of those that two runs lay back.
    void layBack(std::unique_ptr<HistoryColumns> columns);

private:
    std::mutex mutex_;
    std::unique_ptr<HistoryColumns> columns_;
};

// What a run has taken, for as long as it lasts.
class HistoryLoan {
public:
    explicit HistoryLoan(std::shared_ptr<HistoryShelf> shelf)
        : shelf_(std::move(shelf)), columns_(shelf_->take()) {}
    ~HistoryLoan() { shelf_->layBack(std::move(columns_)); }
    HistoryLoan(const HistoryLoan&) = delete;
    HistoryLoan& operator=(const HistoryLoan&) = delete;

    HistoryColumns& columns() { return *columns_; }

private:
    std::shared_ptr<HistoryShelf> shelf_;
    std::unique_ptr<HistoryColumns> columns_;
};

// The shelf that the open windows share: made for the first of them, gone with the last.
class SharedHistory {
public:
    std::shared_ptr<HistoryShelf> shelf();

private:
    std::weak_ptr<HistoryShelf> shelf_;
};

}  // namespace guanchao
