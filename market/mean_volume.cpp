#include "market/mean_volume.h"

#include <algorithm>

#include "market/day_history.h"
#include "market/quote_reply.h"

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
    if (history.size() < days) {
        return 0;
    }
    std::ranges::stable_sort(history, {}, &HistoryDay::day);
    double sum = 0;
    for (const HistoryDay& day : history.last(days)) {
        sum += day.volume;
    }
    const double mean = sum / static_cast<double>(days);
    return isMarketFigure(mean) ? mean : 0;
}

}  // namespace guanchao
