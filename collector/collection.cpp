#include "collector/collection.h"

#include <algorithm>

#include "base/activity.h"
#include "heat/collector_contract.h"
#include "store/failure.h"
#include "store/patience.h"

namespace guanchao {

using namespace std::chrono_literals;

namespace {

// So often a run that waits looks whether it goes on.
constexpr std::chrono::milliseconds longestWait = 1000ms;
constexpr std::chrono::milliseconds pausedWait = 250ms;

// A store that can't be asked at the moment takes no order back.
bool isStillWanted(const StoreFile& heat) {
    const Connection::BusyTimeout shortest(blink);
    try {
        return isRunWanted(heat);
    } catch (const StoreError&) {
        return true;
    }
}

}  // namespace

Collection::Collection(Job& job, const StoreFile& heat, HttpClient& http, const Clock& clock,
                       const Pacing& pacing, Wait wait)
    : job_(job), heat_(heat), http_(http), clock_(clock), pacing_(pacing), wait_(std::move(wait)) {}

void Collection::begin(Scope scope) {
    makeLanes();
    for (const Item& item : job_.items()) {
        const bool isDone = scope == Scope::rest && item.isDone;
        if (isDone) {
            ++tally_.before;
        } else {
            queue_.add({items_.size(), item.laiyuan, 0, {}, {}, {}, false});
        }
        items_ << Progress{item, isDone ? ItemState::done : ItemState::waiting, {}};
    }
    tally_.items = static_cast<int>(items_.size());
    goesOn();
}

void Collection::makeLanes() {
    services_ = job_.services();
    QStringList laiyuan;
    for (int way = 0; way < services_.size(); ++way) {
        laiyuan << job_.laiyuan(way);
        const QString host = services_[way].host;
        auto lane = std::ranges::find(lanes_, host, &Lane::host);
        if (lane == lanes_.end()) {
            lane = lanes_.insert(lanes_.end(), Lane());
            lane->host = host;
        }
        lane->ways << way;
    }
    queue_ = WorkQueue(laiyuan);
}

QCoro::Task<> Collection::run(std::stop_token stop) {
    const std::stop_callback breakOff(stop, [this] { breakOff_.request_stop(); });
    if (!hasEnded()) {
        workingSince_ = clock_.uptime();
    }
    std::vector<QCoro::Task<>> lanes;
    for (size_t at = 0; at < lanes_.size(); ++at) {
        lanes.push_back(work(at, breakOff_.get_token()));
    }
    for (QCoro::Task<>& lane : lanes) {
        co_await lane;
    }
    settle();
}

QCoro::Task<> Collection::work(size_t at, std::stop_token stop) {
    try {
        co_await workOn(at, stop);
    } catch (const Cancelled&) {
        lanes_[at].isAsking = false;
    }
}

QCoro::Task<> Collection::workOn(size_t at, std::stop_token stop) {
    while (goesOn() && !lanes_[at].isClosed) {
        if (isTurnOf(lanes_[at])) {
            co_await advance(at, stop);
        }
        if (goesOn()) {
            co_await wait_(std::min(untilTurnOf(lanes_[at]), longestWait), stop);
        }
    }
}

void Collection::setPaused(bool paused) {
    if (hasEnded() || paused == (state_ == RunState::paused)) {
        return;
    }
    tally_ = tally();
    workingSince_ = paused ? std::nullopt : std::optional(clock_.uptime());
    state_ = paused ? RunState::paused : RunState::running;
}

// The one place that decides it, asked before each page and each wait.
bool Collection::goesOn() {
    if (!hasEnded()) {
        const RunState state = stateByNow();
        if (state != state_) {
            tally_ = tally();
            workingSince_.reset();
            state_ = state;
            breakOff_.request_stop();
        }
    }
    return !hasEnded();
}

RunState Collection::stateByNow() {
    const auto isIdle = [](const Lane& lane) { return !lane.current; };
    const auto isClosed = [](const Lane& lane) { return lane.isClosed; };
    if (queue_.isEmpty() && std::ranges::all_of(lanes_, isIdle)) {
        const bool isDone = tally_.written > 0 || tally_.before == tally_.items;
        return isDone ? RunState::finished : RunState::nothingRead;
    }
    if (isFoundUnwanted()) {
        return RunState::unwanted;
    }
    if (pacing_.isHopeless(refusedRowsInARow_)) {
        return RunState::storeRefuses;
    }
    return std::ranges::all_of(lanes_, isClosed) ? RunState::hopeless : state_;
}

bool Collection::isFoundUnwanted() {
    if (clock_.uptime() < nextLook_) {
        return false;
    }
    nextLook_ = clock_.uptime() + (state_ == RunState::paused ? pausedWait : longestWait);
    return !isWanted();
}

bool Collection::isWanted() const {
    return !job_.endsWithMainProgram() || isStillWanted(heat_);
}

void Collection::settle() {
    if (!hasEnded()) {
        tally_ = tally();
        workingSince_.reset();
        state_ = RunState::stopped;
    }
    for (Lane& lane : lanes_) {
        if (const auto current = std::exchange(lane.current, std::nullopt)) {
            show(current->item, ItemState::waiting);
        }
    }
}

bool Collection::isTurnOf(Lane& lane) {
    if (state_ == RunState::paused || clock_.uptime() < lane.due) {
        return false;
    }
    if (!lane.current) {
        lane.current = queue_.take(lane.ways, clock_.uptime());
        lane.request.reset();
        if (lane.current) {
            show(lane.current->item, ItemState::asking);
        }
    }
    return lane.current.has_value();
}

std::chrono::milliseconds Collection::untilTurnOf(const Lane& lane) const {
    if (state_ == RunState::paused) {
        return pausedWait;
    }
    const std::chrono::milliseconds now = clock_.uptime();
    if (lane.current || lane.due > now) {
        return std::max(lane.due - now, 0ms);
    }
    const std::optional<Pending> next = queue_.nextDue(lane.ways);
    return next ? std::max(next->due - now, 0ms) : longestWait;
}

QCoro::Task<> Collection::advance(size_t at, std::stop_token stop) {
    try {
        if (!lanes_[at].current->isRead) {
            co_await readPage(at, stop);
        }
    } catch (const std::exception& failure) {
        failPage(lanes_[at], {FaultKind::unreadable, failureReason(failure)});
    }
    if (lanes_[at].current && lanes_[at].current->isRead) {
        co_await writeItem(at, stop);
    }
}

// A request that was decided when the page before came stands: by now the job might want none.
QCoro::Task<> Collection::readPage(size_t at, std::stop_token stop) {
    Lane& lane = lanes_[at];
    const Item item = items_[lane.current->item].item;
    if (!lane.request) {
        lane.request = job_.nextRequest(item, lane.current->asked);
    }
    const QString request = lane.request.value_or(QString());
    const Service service = services_[lane.current->asked.way];
    lane.isAsking = true;
    const HttpReply reply = co_await http_.get(service, request, stop);
    lane.isAsking = false;
    lane.due = clock_.uptime() + pacing_.beforePage();
    const std::optional<Fault> fault = reply.answered()
                                           ? job_.faultOf(item, lane.current->asked, reply.body)
                                           : faultOf(reply, clock_.now());
    if (fault) {
        http_.complain(service, fault->words);
        failPage(lane, *fault);
    } else {
        takePage(lane, reply.body);
    }
}

void Collection::takePage(Lane& lane, const QByteArray& page) {
    ++tally_.pages;
    lane.rests = lane.failuresInARow = 0;
    lane.current->asked.pages << page;
    lane.request = job_.nextRequest(items_[lane.current->item].item, lane.current->asked);
    lane.current->isRead = !lane.request;
}

QCoro::Task<> Collection::writeItem(size_t at, std::stop_token stop) {
    const Pending pending = *lanes_[at].current;
    const Item item = items_[pending.item].item;
    const auto step = [this, item, pending] { job_.write(item, pending.asked); };
    try {
        co_await patiently(step, stop);
    } catch (const StoreError& failure) {
        failRow(lanes_[at], failure);
        co_return;
    } catch (const OperationError& unwanted) {
        lanes_[at].current.reset();
        skip(pending, failureReason(unwanted));
        co_return;
    }
    lanes_[at].current.reset();
    refusedRowsInARow_ = 0;
    ++tally_.written;
    show(pending.item, ItemState::written);
}

void Collection::show(qsizetype item, ItemState state, const QString& reason) {
    items_[item].state = state;
    items_[item].reason = reason;
    if (changed) {
        changed(item);
    }
}

RunTally Collection::tally() const {
    RunTally tally = tally_;
    tally.wait = hasEnded() ? 0ms : untilNextTurn();
    if (workingSince_) {
        tally.worked += clock_.uptime() - *workingSince_;
    }
    return tally;
}

std::chrono::milliseconds Collection::untilNextTurn() const {
    std::optional<std::chrono::milliseconds> next;
    for (const Lane& lane : lanes_) {
        if (!lane.isClosed) {
            const std::chrono::milliseconds wait = lane.isAsking ? 0ms : untilTurnOf(lane);
            next = std::min(next.value_or(wait), wait);
        }
    }
    return next.value_or(0ms);
}

}  // namespace guanchao
