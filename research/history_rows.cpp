#include "research/history_rows.h"

#include <algorithm>
#include <cmath>

namespace guanchao {

namespace {

constexpr double leastPrice = 0.01;
constexpr double mostPrice = 1e6;

bool isTraded(const DayBar& bar) {
    const auto prices = {bar.open, bar.high, bar.low, bar.close};
    return std::ranges::all_of(prices,
                               [](double it) { return it >= leastPrice && it <= mostPrice; });
}

// What the factors are multiplied by to go on from the stored ones.
double scaleOf(const CodeGap& gap, const FactorList& factors) {
    const std::optional<Neighbour>& known = gap.before ? gap.before : gap.behind;
    return known && known->factor > 0 ? known->factor / factors.on(known->day) : 1;
}

// The former day's close in the prices of a day with that factor.
struct FormerDay {
    double close = 0;  // in hundredths
    double factor = 1;

    qint64 closeAt(double newFactor) const { return std::llround(close * factor / newFactor); }
};

}  // namespace

qint64 hundredths(double price) {
    return std::llround(price * 100);
}

DayRow closeRow(const DayQuote& quote, double factor) {
    return {quote.dm,
            quote.moment.date(),
            hundredths(quote.open),
            hundredths(quote.high),
            hundredths(quote.low),
            hundredths(quote.close),
            hundredths(quote.formerClose),
            quote.volume,
            quote.turnover,
            factor};
}

QList<DayRow> gapRows(const CodeGap& gap, const QList<DayBar>& bars, const FactorList& factors) {
    const double scale = scaleOf(gap, factors);
    std::optional<FormerDay> former;
    if (gap.before) {
        former = FormerDay{static_cast<double>(gap.before->close), gap.before->factor};
    }
    QList<DayRow> rows;
    for (const DayBar& bar : bars) {
        // One from before the last stored day tells less of it than the store.
        const bool isOlder = gap.before && bar.day <= gap.before->day;
        if (!isTraded(bar) || isOlder || bar.day > gap.days.last) {
            continue;
        }
        const double factor = factors.on(bar.day) * scale;
        const qint64 formerClose = former ? former->closeAt(factor) : 0;
        if (bar.day >= gap.days.first && formerClose > 0) {
            rows << DayRow{gap.dm,
                           bar.day,
                           hundredths(bar.open),
                           hundredths(bar.high),
                           hundredths(bar.low),
                           hundredths(bar.close),
                           formerClose,
                           bar.volume,
                           bar.turnover.value_or(0),
                           factor};
        }
        former = FormerDay{static_cast<double>(hundredths(bar.close)), factor};
    }
    return rows;
}

}  // namespace guanchao
