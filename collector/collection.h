// 采集: the run over the items of a job. Each host is asked by itself and at its own pace, page
// after page; all share the items. An item that has failed everywhere is tried again later in the
// run, with growing pauses, and is skipped in the end.
#pragma once

#include <QCoro/QCoroTask>
#include <functional>
#include <optional>
#include <stop_token>
#include <vector>

#include "base/pause.h"
#include "collector/job.h"
#include "collector/pacing.h"
#include "collector/run_tally.h"
#include "collector/work_queue.h"
#include "platform/clock.h"
#include "store/store_error.h"
#include "store/stores.h"

namespace guanchao {

enum class ItemState : std::uint8_t { waiting, done, asking, written, failed, skipped };

enum class RunState : std::uint8_t {
    running,
    paused,
    finished,
    nothingRead,   // each item was tried, and none has its row
    stopped,       // by the user
    unwanted,      // the main program has ended
    hopeless,      // each host has failed time and again
    storeRefuses,  // row after row
};

enum class Scope : std::uint8_t {
    rest,  // what has no row of the day yet
    all,
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
    void begin(Scope scope = Scope::rest);

    // Asks for the pages, and writes each item once its last page is there. A request that is
    // broken off is no failure.
    QCoro::Task<> run(std::stop_token stop);

    // A paused run only looks whether it is still wanted; the page that is under way is kept.
    void setPaused(bool paused);

    RunState state() const { return state_; }
    bool hasEnded() const { return state_ != RunState::running && state_ != RunState::paused; }
    // False once the main program has ended, for a job that ends with it.
    bool isWanted() const;
    const QList<Progress>& items() const { return items_; }
    RunTally tally() const;

    // 共 60 项，写入 40 项，跳过 1 项; once it has ended also what was left: ，没有采集 19 项.
    QString countWords() const;
    // How the run stands or has ended.
    QString summary() const;
    // What each host does or waits for; empty once the run has ended.
    QString waitWords() const;

private:
    // The services of one host.
    struct Lane {
        QString host;
        QList<int> ways;
        std::optional<Pending> current;
        std::optional<QString> request;    // for its next page, once the one before has come
        bool isAsking = false;             // a page is under way
        std::chrono::milliseconds due{0};  // for its next page, by Clock::uptime
        int rests = 0;                     // in a row, after it said that it is asked too much
        int failuresInARow = 0;
        bool isClosed = false;
        QString lastFault;
    };

    void makeLanes();
    QCoro::Task<> work(size_t at, std::stop_token stop);
    QCoro::Task<> workOn(size_t at, std::stop_token stop);
    bool goesOn();
    RunState stateByNow();
    bool isFoundUnwanted();
    void settle();
    bool isTurnOf(Lane& lane);
    std::chrono::milliseconds untilTurnOf(const Lane& lane) const;
    std::chrono::milliseconds untilNextTurn() const;
    QCoro::Task<> advance(size_t at, std::stop_token stop);
    QCoro::Task<> readPage(size_t at, std::stop_token stop);
    void takePage(Lane& lane, const QByteArray& page);
    QCoro::Task<> writeItem(size_t at, std::stop_token stop);
    void failPage(Lane& lane, const Fault& fault);
    void rest(Lane& lane, const Fault& fault);
    void close(Lane& lane);
    void failRow(Lane& lane, const StoreError& failure);
    void tryLater(Pending pending, const QString& reason);
    void skip(const Pending& pending, const QString& reason);
    void show(qsizetype item, ItemState state, const QString& reason = {});
    QString stateWords() const;
    QString waitWordsOf(const Lane& lane) const;
    QString nameOf(const Pending& pending) const { return items_[pending.item].item.name; }

    Job& job_;
    const StoreFile& heat_;
    HttpClient& http_;
    const Clock& clock_;
    const Pacing& pacing_;
    Wait wait_;

    QList<Service> services_;
    QList<Progress> items_;
    WorkQueue queue_{{}};
    std::vector<Lane> lanes_;
    RunState state_ = RunState::running;
    std::stop_source breakOff_;  // what is under way in other lanes once the run has ended in one
    RunTally tally_;
    std::optional<std::chrono::milliseconds> workingSince_;
    std::chrono::milliseconds nextLook_{0};  // for the end of the main program
    int refusedRowsInARow_ = 0;
    QString lastRefusal_;
    Fault lastFault_;
};

}  // namespace guanchao
