// 采集: the run over the items of a job, a page a step. It never waits itself: each step tells how
// long to wait before the next one. A failed item is tried again later in the run, with growing
// pauses, and is skipped in the end.
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
    finished,
    stopped,   // by the user
    unwanted,  // the main program has ended
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
    std::optional<std::chrono::milliseconds> step();

    void stop() { stopWanted_ = true; }

    RunState state() const { return state_; }
    const QList<Progress>& items() const { return items_; }
    int settled() const { return written_ + static_cast<int>(skipped_.size()); }
    int failures() const { return failures_; }  // failed tries, those mended later too

    // How the run has ended, with the names of what was skipped.
    QString summary() const;

private:
    struct Pending {
        qsizetype item = 0;
        int failures = 0;
        QDateTime due;
    };

    void endBetweenItems();
    bool takeDueItem();
    std::chrono::milliseconds untilNextDue() const;
    void askForPage();
    void writeItem();
    void fail(const QString& reason);
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
    QStringList skipped_;
};

}  // namespace guanchao
