#include "research/history_rows.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace guanchao {

namespace {

constexpr double leastPrice = 0.01;
constexpr double mostPrice = 1e6;

bool isTraded(const DayBar& bar) {
    const auto prices = {bar.open, bar.high, bar.low, bar.close};
    return std::ranges::all_of(prices,
                               [](double it) { return it >= leastPrice && it <= mostPrice; });
}

// Between two stored days the factor changes on the day that the services tell, and to what is
// stored: those of another source can differ.
double factorOn(const QDate& day, const QList<Neighbour>& stored, const FactorList& factors) {
    const auto behind = std::ranges::lower_bound(stored, day, {}, &Neighbour::day);
    const bool hasBehind = behind != stored.end();
    const bool hasBefore = behind != stored.begin();
    if (!hasBefore && !hasBehind) {
        return factors.on(day);
    }
    const double told = factors.on(day);
    const bool isAsBehind =
        hasBehind && (behind->day == day || told == factors.on(behind->day) || !hasBefore);
    const Neighbour& known = isAsBehind ? *behind : *std::prev(behind);
    const bool isOfBoth = hasBefore && hasBehind && std::prev(behind)->factor == behind->factor;
    return isOfBoth ? known.factor : known.factor * told / factors.on(known.day);
}

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
    const bool hasBefore = !gap.stored.isEmpty() && gap.stored.first().day < gap.days.first;
    std::optional<DayRow> former;
    QList<DayRow> rows;
    for (const DayBar& bar : bars) {
        if (!isTraded(bar) || bar.day > gap.days.last) {
            continue;
        }
        DayRow row = {gap.dm,
                      bar.day,
                      hundredths(bar.open),
                      hundredths(bar.high),
                      hundredths(bar.low),
                      hundredths(bar.close),
                      0,
                      bar.volume,
                      bar.turnover.value_or(0),
                      factorOn(bar.day, gap.stored, factors)};
        const bool isOfGap = bar.day >= gap.days.first && (hasBefore || former);
        if (isOfGap && rows.isEmpty() && !hasBefore) {
            row.formerClose = formerCloseBy(*former, row.factor);
        }
        if (isOfGap) {
            rows << row;
        }
        former = row;
    }
    return rows;
}

}  // namespace guanchao
