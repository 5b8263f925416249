#include "market/mean_volume.h"

#include <algorithm>

#include "research/day_history.h"

namespace guanchao {

namespace {

constexpr qsizetype days = 10;

// Long enough to hold ten trading days beside the longest holidays.
constexpr int daysBack = 40;

}  // namespace

double MeanVolume::of(const QString& dm) {
    const QDate today = clock_.now().date();
    Known& known = known_[dm];
    if (known.day != today || known.mean <= 0) {
        known = {today, fetch(dm, today)};
    }
    return known.mean;
}

double MeanVolume::fetch(const QString& dm, QDate today) const {
    QList<HistoryDay> history = DayHistory(http_, history_)
                                    .fetch(dm, today.addDays(-daysBack), today.addDays(-1))
                                    .value_or(QList<HistoryDay>());
    // A service that doesn't keep to the range may send the day that isn't full yet.
    history.removeIf([today](const HistoryDay& it) { return it.day >= today; });
    const QList<HistoryDay> last = history.last(std::min(days, history.size()));
    double sum = 0;
    for (const HistoryDay& day : last) {
        sum += day.volume;
    }
    return last.isEmpty() ? 0 : sum / static_cast<double>(last.size());
}

}  // namespace guanchao
