#include "collector/work_queue.h"

#include <algorithm>

namespace guanchao {

namespace {

// So many items of another kind are left to it: at the end of each day's run a few would change
// their kind otherwise, and lose their growth.
constexpr int leftToTheirKind = 30;

}  // namespace

WorkQueue::WorkQueue(const QStringList& laiyuan) : laiyuan_(laiyuan) {
    for (int way = 0; way < laiyuan_.size(); ++way) {
        open_ << way;
    }
}

std::optional<Pending> WorkQueue::take(const QList<int>& ways, std::chrono::milliseconds now) {
    QList<qsizetype> others;
    for (qsizetype at = 0; at < queue_.size(); ++at) {
        const std::optional<int> way = wayFor(queue_[at], ways);
        if (!way || queue_[at].due > now) {
            continue;
        }
        if (isOwn(queue_[at], ways)) {
            return takeOut(at, *way);
        }
        others << at;
    }
    if (others.size() <= leftToTheirKind) {
        return std::nullopt;
    }
    return takeOut(others.last(), wayFor(queue_[others.last()], ways).value());
}

// That of its own kind first.
std::optional<int> WorkQueue::wayFor(const Pending& pending, const QList<int>& ways) const {
    std::optional<int> found;
    for (const int way : ways) {
        if (!open_.contains(way) || pending.tried.contains(way)) {
            continue;
        }
        if (pending.laiyuan == laiyuan_[way]) {
            return way;
        }
        found = found.value_or(way);
    }
    return found;
}

bool WorkQueue::isOwn(const Pending& pending, const QList<int>& ways) const {
    const auto isOfItsKind = [&](int way) { return laiyuan_[way] == pending.laiyuan; };
    return !pending.laiyuan || pending.isRead || !pending.tried.isEmpty() ||
           std::ranges::any_of(ways, isOfItsKind) || std::ranges::none_of(open_, isOfItsKind);
}

Pending WorkQueue::takeOut(qsizetype at, int way) {
    Pending pending = queue_.takeAt(at);
    if (!pending.isRead) {
        pending.asked = {way, {}};
    }
    return pending;
}

std::optional<Pending> WorkQueue::nextDue(const QList<int>& ways) const {
    std::optional<Pending> next;
    for (const Pending& it : queue_) {
        if (wayFor(it, ways) && isOwn(it, ways) && (!next || it.due < next->due)) {
            next = it;
        }
    }
    return next;
}

// What waited for it alone is tried anew.
void WorkQueue::close(int way) {
    open_.remove(way);
    for (Pending& it : queue_) {
        if (isTriedOut(it)) {
            it.tried.clear();
        }
    }
}

bool WorkQueue::hasUntried() const {
    return std::ranges::any_of(
        queue_, [](const Pending& it) { return it.failures == 0 && it.tried.isEmpty(); });
}

}  // namespace guanchao
