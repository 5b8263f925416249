#include "research/asked_history.h"

#include <algorithm>

#include "services/trading_day.h"

namespace guanchao {

bool AskedHistory::reachesBackTo(const QString& dm, const QDate& first) const {
    const Asked asked = asked_.value(dm);
    return asked.first.isValid() && asked.first <= first;
}

bool AskedHistory::reachesTo(const QString& dm, const QDate& last, const QDateTime& now) const {
    const Asked asked = asked_.value(dm);
    if (!asked.last.isValid() || last > asked.last) {
        return false;
    }
    const bool isSameDay = asked.on.date() == now.date();
    return last < asked.on.date() || (isSameDay && lastDayOver(asked.on) == lastDayOver(now));
}

void AskedHistory::noteStart(const QString& dm, const QDate& first) {
    asked_[dm].first = first;
}

void AskedHistory::noteEnd(const QString& dm, const QDate& last, const QDateTime& now) {
    Asked& asked = asked_[dm];
    asked.last = last;
    asked.on = now;
}

void AskedHistory::noteRange(const QString& dm, const QDate& first, const QDate& last,
                             const QDateTime& now) {
    noteStart(dm, first);
    noteEnd(dm, last, now);
}

void AskedHistory::noteRows(const QString& dm, const QDate& oldest, const QDate& newest) {
    Asked& asked = asked_[dm];
    asked.oldest = asked.oldest.isValid() ? std::min(asked.oldest, oldest) : oldest;
    asked.newest = asked.newest.isValid() ? std::max(asked.newest, newest) : newest;
}

void AskedHistory::seeRows(const QString& dm, const QDate& oldest, const QDate& newest) {
    const Asked asked = asked_.value(dm);
    const bool isThere = newest.isValid() && oldest <= asked.oldest && newest >= asked.newest;
    if (asked.newest.isValid() && !isThere) {
        asked_.remove(dm);
    }
    if (newest.isValid()) {
        noteRows(dm, oldest, newest);
    }
}

}  // namespace guanchao
