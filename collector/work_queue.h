// The items that are still to be asked for or written, and which of them is next for a host.
#pragma once

#include <QList>
#include <QSet>
#include <QStringList>
#include <chrono>
#include <optional>

#include "collector/job.h"

namespace guanchao {

struct Pending {
    qsizetype item = 0;
    std::optional<QString> laiyuan;    // as of Item
    int failures = 0;                  // tries in which each service has failed, or the store
    std::chrono::milliseconds due{0};  // by Clock::uptime
    QSet<int> tried;                   // services that have failed in the present try
    Asked asked;
    bool isRead = false;  // its pages suffice: only its row is left to be written
};

class WorkQueue {
public:
    // `laiyuan` of each service, all of which are open.
    explicit WorkQueue(const QStringList& laiyuan);

    // At the end, and as the next one.
    void add(const Pending& pending) { queue_ << pending; }
    void addFirst(const Pending& pending) { queue_.prepend(pending); }

    // The next one that one of these services can be asked for now, with that service. An item
    // stays with the kind of service that has counted it before, so that its growth can be told; a
    // service with nothing else to do takes those of another kind from the end, but the last few.
    std::optional<Pending> take(const QList<int>& ways, std::chrono::milliseconds now);

    // The one that these services can be asked for first, now or later.
    std::optional<Pending> nextDue(const QList<int>& ways) const;

    // That service is not asked any more.
    void close(int way);
    bool isTriedOut(const Pending& pending) const { return pending.tried.contains(open_); }

    bool isEmpty() const { return queue_.isEmpty(); }
    bool hasUntried() const;

private:
    std::optional<int> wayFor(const Pending& pending, const QList<int>& ways) const;
    bool isOwn(const Pending& pending, const QList<int>& ways) const;
    Pending takeOut(qsizetype at, int way);

    QStringList laiyuan_;  // by service
    QSet<int> open_;
    QList<Pending> queue_;
};

}  // namespace guanchao
