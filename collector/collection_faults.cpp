// What becomes of an item and of a host when a page or a row has failed.
#include <algorithm>
#include <utility>

#include "collector/collection.h"
#include "store/failure.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

// What a host limits is no fault of the item. The last few items of a good run may all fail, each
// time: a host is given up only while there are untried ones.
void Collection::failPage(Lane& lane, const Fault& fault) {
    ++tally_.failures[fault.kind];
    lastFault_ = fault;
    lane.lastFault = fault.words;
    Pending pending = std::exchange(lane.current, std::nullopt).value();
    if (fault.kind == FaultKind::limited) {
        queue_.addFirst(pending);
        show(pending.item, ItemState::failed, fault.words);
        rest(lane, fault);
        return;
    }
    pending.tried << pending.asked.way;
    if (queue_.isTriedOut(pending)) {
        tryLater(pending, fault.words);
    } else {
        queue_.addFirst(pending);
        show(pending.item, ItemState::failed, fault.words);
    }
    ++lane.failuresInARow;
    if (pacing_.isHopeless(lane.failuresInARow) && queue_.hasUntried()) {
        close(lane);
    }
}

void Collection::rest(Lane& lane, const Fault& fault) {
    ++lane.rests;
    if (const auto pause = pacing_.beforeRetry(lane.rests)) {
        lane.due = clock_.uptime() + std::max(*pause, fault.rest);
    } else {
        close(lane);
    }
}

void Collection::close(Lane& lane) {
    lane.isClosed = true;
    for (const int way : lane.ways) {
        queue_.close(way);
    }
}

// Its pages are kept: only the row is tried again.
void Collection::failRow(Lane& lane, const StoreError& failure) {
    ++tally_.failures[FaultKind::notWritten];
    ++refusedRowsInARow_;
    lastRefusal_ = failureReason(failure);
    if (failure.fault() == StoreFault::other) {
        lastRefusal_ += u"原因："_s + failure.reason();
    }
    tryLater(std::exchange(lane.current, std::nullopt).value(), lastRefusal_);
}

void Collection::tryLater(Pending pending, const QString& reason) {
    pending.tried.clear();
    ++pending.failures;
    if (const auto pause = pacing_.beforeRetry(pending.failures)) {
        pending.due = clock_.uptime() + *pause;
        queue_.add(pending);
        show(pending.item, ItemState::failed, reason);
    } else {
        skip(pending, reason);
    }
}

void Collection::skip(const Pending& pending, const QString& reason) {
    tally_.skipped << nameOf(pending);
    show(pending.item, ItemState::skipped, reason);
}

}  // namespace guanchao
