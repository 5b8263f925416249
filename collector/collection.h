// 采集: the run over the items of a job, a page a step. It never waits between pages: each step
// tells how long to wait before the next one. A failed item is tried again later in the run, with
// growing pauses, and is skipped in the end.
#pragma once

#include <QDateTime>
#include <chrono>
#include <functional>
#include <optional>

#include "collector/job.h"
#include "collector/pacing.h"
#include "platform/clock.h"
#include "platform/http.h"
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

    Collection(Job& job, const StoreFile& heat, Http& http, const Clock& clock,
               const Pacing& pacing);

    // Called with the position of an item whose progress has changed.
    std::function<void(qsizetype)> changed;

    // Reads the items. Raises StoreError.
    void begin();

    // Asks for the next page, and writes the item whose last page it is. Nothing when the run has
    // ended; it ends between two items if the main program has, at once if the user stops it.
    // Events may happen during a request: all below may be called then, this may not.
    std::optional<std::chrono::milliseconds> step();

    void stop() { stopWanted_ = true; }
    bool stopWanted() const { return stopWanted_; }

    // A paused run only looks whether it is still wanted.
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

    void endIfUnwanted();
    bool takeDueItem();
    std::chrono::milliseconds untilNextDue() const;
    void askForPage();
    void readPage();
    void writeItem();
    void failPage(const QString& reason);
    void fail(const QString& reason);
    bool hasUntriedItem() const;
    void endStopped();
    void show(ItemState state, const QString& reason = {});

    Job& job_;
    const StoreFile& heat_;
    Http& http_;
    const Clock& clock_;
    const Pacing& pacing_;

    QList<Progress> items_;
    QList<Pending> queue_;
    std::optional<Pending> current_;
    QStringList paths_;
    QList<QByteArray> pages_;
    RunState state_ = RunState::running;
    bool stopWanted_ = false;
    int written_ = 0;
    int failures_ = 0;
    int failedPagesInARow_ = 0;
    QStringList skipped_;
};

}  // namespace guanchao
