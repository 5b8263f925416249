#include "market/mean_volume.h"

#include <algorithm>

#include "services/day_bars.h"
#include "services/quote_reply.h"

namespace guanchao {

namespace {

constexpr qsizetype days = 10;

// Long enough to hold ten trading days beside the longest holidays.
constexpr int daysBack = 40;

double meanOf(QList<DayBar> history, QDate today) {
    // A service that doesn't keep to the range may send the day that isn't full yet.
    history.removeIf([today](const DayBar& it) { return it.day >= today; });
    if (history.size() < days) {
        return 0;
    }
    std::ranges::stable_sort(history, {}, &DayBar::day);
    double sum = 0;
    for (const DayBar& day : history.last(days)) {
        sum += day.volume;
    }
    const double mean = sum / static_cast<double>(days);
    return isMarketFigure(mean) ? mean : 0;
}

}  // namespace

QCoro::Task<double> MeanVolume::of(QString dm, std::stop_token stop) {
    const QDate today = clock_.now().date();
    const Known known = known_.value(dm);
    if (known.day == today && known.mean > 0) {
        co_return known.mean;
    }
    const double mean = co_await fetch(dm, today, stop);
    known_[dm] = {today, mean};
    co_return mean;
}

QCoro::Task<double> MeanVolume::fetch(QString dm, QDate today, std::stop_token stop) const {
    const DayBars bars(http_, clock_, history_);
    const BarsReply reply =
        co_await bars.fetch(dm, today.addDays(-daysBack), today.addDays(-1), stop);
    co_return meanOf(reply.days.value_or(QList<DayBar>()), today);
}

}  // namespace guanchao
