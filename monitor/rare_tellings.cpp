#include "monitor/rare_tellings.h"

#include <algorithm>
#include <iterator>

namespace guanchao {

namespace {

constexpr qint64 secondsBetweenTellings = 600;

}  // namespace

bool RareTellings::isDue(const QString& reason, const QDateTime& now) {
    const QDateTime toldAt = toldAt_.value(reason);
    // Below 0 where the clock has been set back.
    const qint64 since = toldAt.isValid() ? toldAt.secsTo(now) : -1;
    if (since >= 0 && since < secondsBetweenTellings) {
        return false;
    }
    toldAt_[reason] = now;
    return true;
}

QStringList RareTellings::dueOf(const QStringList& reasons, const QDateTime& now) {
    QStringList due;
    std::ranges::copy_if(reasons, std::back_inserter(due),
                         [&](const QString& reason) { return isDue(reason, now); });
    return due;
}

void RareTellings::keepOnly(const QStringList& reasons) {
    toldAt_.removeIf([&](const auto& told) { return !reasons.contains(told.key()); });
}

}  // namespace guanchao
