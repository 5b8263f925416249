#include "base/cancellable_run.h"

#include <QScopeGuard>

#include "base/activity.h"

namespace guanchao {

namespace {

struct Cancelled {};

}  // namespace

CancellableRun::CancellableRun(EventPump& pump, QString refusal, std::function<void()> changed)
    : pump_(pump), refusal_(std::move(refusal)), changed_(std::move(changed)) {}

bool CancellableRun::run(const std::function<void()>& job) {
    requireIdle();
    running_ = true;
    cancelled_ = false;
    const auto end = qScopeGuard([this] {
        running_ = false;
        changed_();
    });
    changed_();
    try {
        job();
        return true;
    } catch (const Cancelled&) {
        return false;
    }
}

void CancellableRun::letEventsHappen() {
    pump_.runPendingEvents();
    endIfCancelled();
}

void CancellableRun::letEventsHappenIfDue() {
    pump_.runPendingEventsIfDue();
    endIfCancelled();
}

void CancellableRun::endIfCancelled() const {
    if (cancelled_) {
        throw Cancelled();
    }
}

void CancellableRun::requireIdle() const {
    if (running_) {
        throw OperationError(refusal_);
    }
}

}  // namespace guanchao
