// Long work in a thread of its own, awaited by the thread that shows. A job takes what it needs by
// value, since the window that began it may be gone before it ends, and opens connections of its
// own.
#pragma once

#include <QCoro/QCoroTask>
#include <QFutureWatcher>
#include <QPromise>
#include <QScopedPointer>
#include <QThreadPool>
#include <QTimer>
#include <chrono>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <type_traits>
#include <utility>
#include <variant>

#include "base/later.h"
#include "base/pause.h"

namespace guanchao {

// How often the thread that shows looks how far a job is.
inline constexpr std::chrono::milliseconds betweenLooks(50);
// Jobs at one time, whatever the processors: each waits for the disk more than it counts.
inline constexpr int mostWorkers = 8;

// What a job sees of those who wait for it. Belongs to both threads.
template <typename Progress>
class Work {
public:
    Work(std::stop_token wanted, std::stop_token owner)
        : wanted_(std::move(wanted)), owner_(std::move(owner)) {}

    // How far the job is. Only the newest word is shown.
    void tell(Progress progress) {
        const std::scoped_lock lock(mutex_);
        newest_ = std::move(progress);
    }
    std::optional<Progress> takeNewest() {
        const std::scoped_lock lock(mutex_);
        return std::exchange(newest_, std::nullopt);
    }

    // The user wants the job to end where it loses nothing.
    bool isToStop() const { return wanted_.stop_requested(); }
    // Between small steps: ends the job if its window is gone.
    void endIfAbandoned() const { guanchao::endIfStopped(owner_); }
    // The same, and if the user wants it to end.
    void endIfStopped() const {
        endIfAbandoned();
        guanchao::endIfStopped(wanted_);
    }

private:
    std::mutex mutex_;
    std::optional<Progress> newest_;
    std::stop_token wanted_;
    std::stop_token owner_;
};

// Carries the job out in a thread, where it ends by Cancelled if it is stopped.
template <typename Progress, typename Job>
auto startWorker(Job job, std::shared_ptr<Work<Progress>> work) {
    using Given = std::invoke_result_t<Job, Work<Progress>&>;
    const auto promise = std::make_shared<QPromise<std::optional<Given>>>();
    QThreadPool& pool = *QThreadPool::globalInstance();
    pool.setMaxThreadCount(mostWorkers);
    pool.start([job = std::move(job), work = std::move(work), promise] {
        promise->start();
        try {
            promise->addResult(std::optional<Given>(job(*work)));
        } catch (const Cancelled&) {
            promise->addResult(std::optional<Given>());
        } catch (...) {
            promise->setException(std::current_exception());
        }
        promise->finish();
    });
    return promise->future();
}

// Gives what the job gives, or nothing if the user stopped it (`wanted`), which is known only once
// the job has ended; raises what it raises. `show` is called in the thread that shows with how far
// it is, the last time before this returns. Once the owner's run is stopped (`stop`), this ends by
// Cancelled at once and the job at its next look.
template <typename Progress, typename Job>
QCoro::Task<std::optional<std::invoke_result_t<Job, Work<Progress>&>>> inWorker(
    Job job, std::function<void(const Progress&)> show, std::stop_token wanted,
    std::stop_token stop) {
    using Given = std::optional<std::invoke_result_t<Job, Work<Progress>&>>;
    const auto work = std::make_shared<Work<Progress>>(std::move(wanted), stop);
    const auto look = [work, show = std::move(show)] {
        if (const std::optional<Progress> progress = work->takeNewest()) {
            show(*progress);
        }
    };
    QTimer looks;
    looks.callOnTimeout(look);
    looks.start(betweenLooks);

    const auto ended = std::make_shared<Later<bool>>();
    // It may be in the middle of its signal when this goes.
    const QScopedPointer<QFutureWatcher<Given>, QScopedPointerDeleteLater> watcher(
        new QFutureWatcher<Given>);
    QObject::connect(watcher.get(), &QFutureWatcherBase::finished,
                     [ended] { ended->deliver(true); });
    QFuture<Given> future = startWorker<Progress>(std::move(job), work);
    watcher->setFuture(future);
    co_await ended->orStop(stop);
    look();
    Given given = future.takeResult();
    co_return given;
}

// The same for a job that tells nothing. Ends by Cancelled if the user stopped it.
template <typename Job>
QCoro::Task<std::invoke_result_t<Job, Work<std::monostate>&>> inWorker(Job job,
                                                                       std::stop_token wanted,
                                                                       std::stop_token stop) {
    const std::function<void(const std::monostate&)> show = [](const std::monostate&) {};
    auto given = co_await inWorker<std::monostate>(std::move(job), show, wanted, stop);
    if (!given) {
        throw Cancelled();
    }
    co_return std::move(*given);
}

// The same for one that only the end of its window stops.
template <typename Job>
QCoro::Task<std::invoke_result_t<Job, Work<std::monostate>&>> inWorker(Job job,
                                                                       std::stop_token stop) {
    const std::stop_token unstopped;
    auto given = co_await inWorker(std::move(job), unstopped, stop);
    co_return given;
}

// For who is about to leave or to touch what jobs use: ends once none is under way. Those whose
// window is gone end at their next look.
inline QCoro::Task<> workersEnded(std::stop_token stop) {
    while (QThreadPool::globalInstance()->activeThreadCount() > 0) {
        co_await pause(betweenLooks, stop);
    }
}

}  // namespace guanchao
