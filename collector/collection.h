// 采集: the run over the items of a job, page after page with a pause between all. A failed item is
// tried again later in the run, with growing pauses, and is skipped in the end.
#pragma once

#include <QCoro/QCoroTask>
#include <QDateTime>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

#include "base/pause.h"
#include "collector/job.h"
#include "collector/pacing.h"
#include "platform/clock.h"
#include "store/stores.h"

namespace guanchao {

enum class ItemState : std::uint8_t { waiting, asking, written, failed, skipped };

enum class RunState : std::uint8_t {
    running,
    paused,
    finished,
    stopped,   // by the user
    unwanted,  // the main program has ended
    hopeless,  // page after page has failed
};

class Collection {
public:
    struct Progress {
        Item item;
        ItemState state = ItemState::waiting;
        QString reason;  // of the last failure
    };

    Collection(Job& job, const StoreFile& heat, HttpClient& http, const Clock& clock,
               const Pacing& pacing, Wait wait = pause);

    // Called with the position of an item whose progress has changed.
    std::function<void(qsizetype)> changed;

    // Reads the items. Raises StoreError.
    void begin();

    // Asks for the pages, and writes each item once its last page is there. Ends between two items
    // if the main program has, at once where it is stopped; a request that is broken off is no
    // failure.
    QCoro::Task<> run(std::stop_token stop);

    // A paused run only looks whether it is still wanted; the page that is under way is kept.
    void setPaused(bool paused);

    RunState state() const { return state_; }
    bool hasEnded() const { return state_ != RunState::running && state_ != RunState::paused; }
    const QList<Progress>& items() const { return items_; }
    int settled() const { return written_ + static_cast<int>(skipped_.size()); }
    int failures() const { return failures_; }  // failed tries, those mended later too

    // How the run stands or has ended, with so many names of what was skipped.
    QString summary(qsizetype names = 20) const;

private:
    struct Pending {
        qsizetype item = 0;
        int failures = 0;
        QDateTime due;  // none: at once
    };

    QCoro::Task<std::chrono::milliseconds> step(std::stop_token stop);
    void endIfUnwanted();
    bool takeDueItem();
    std::chrono::milliseconds untilNextDue() const;
    QCoro::Task<> askForPage(std::stop_token stop);
    QCoro::Task<> readPage(std::stop_token stop);
    QCoro::Task<> takePage(QByteArray page, std::stop_token stop);
    QCoro::Task<> writeItem(std::stop_token stop);
    void failPage(const QString& reason);
    void fail(const QString& reason);
    bool hasUntriedItem() const;
    void endIfUnfinished();
    void show(ItemState state, const QString& reason = {});

    Job& job_;
    const StoreFile& heat_;
    std::unique_ptr<PageSource> source_;
    const Clock& clock_;
    const Pacing& pacing_;
    Wait wait_;

    QList<Progress> items_;
    QList<Pending> queue_;
    std::optional<Pending> current_;
    Asked asked_;                     // for the current one
    std::optional<QString> request_;  // for its next page, once the one before has come
    RunState state_ = RunState::running;
    int written_ = 0;
    int failures_ = 0;
    int failedPagesInARow_ = 0;
    QStringList skipped_;
};

}  // namespace guanchao
