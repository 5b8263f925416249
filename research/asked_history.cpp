#include "research/asked_history.h"

namespace guanchao {

bool AskedHistory::reachesBackTo(const QString& dm, const QDate& first) const {
    const Asked asked = asked_.value(dm);
    return asked.first.isValid() && asked.first <= first;
}

bool AskedHistory::reachesTo(const QString& dm, const QDate& last, const QDate& today) const {
    const Asked asked = asked_.value(dm);
    return asked.last.isValid() && last <= asked.last && (last < asked.on || asked.on == today);
}

void AskedHistory::noteStart(const QString& dm, const QDate& first) {
    asked_[dm].first = first;
}

void AskedHistory::noteEnd(const QString& dm, const QDate& last, const QDate& today) {
    Asked& asked = asked_[dm];
    asked.last = last;
    asked.on = today;
}

void AskedHistory::noteRange(const QString& dm, const QDate& first, const QDate& last,
                             const QDate& today) {
    asked_[dm] = {first, last, today};
}

}  // namespace guanchao
