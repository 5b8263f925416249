#include "base/candles.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace guanchao {

namespace {

double scaleOf(const QList<Candle>& days, const Candle& day, Adjustment adjustment) {
    switch (adjustment) {
        case Adjustment::forward:
            return day.factor / days.last().factor;
        case Adjustment::backward:
            return day.factor;
        case Adjustment::none:
            break;
    }
    return 1;
}

// 1, 2 or 5 times a power of ten, at least as large.
double roundStep(double step) {
    const double power = std::pow(10, std::floor(std::log10(step)));
    for (const double it : {1.0, 2.0, 5.0}) {
        if (step <= it * power) {
            return it * power;
        }
    }
    return 10 * power;
}

}  // namespace

QList<Candle> adjusted(const QList<Candle>& days, Adjustment adjustment) {
    if (adjustment == Adjustment::none) {
        return days;
    }
    QList<Candle> result = days;
    for (Candle& day : result) {
        const double scale = scaleOf(days, day, adjustment);
        for (double* price : {&day.open, &day.high, &day.low, &day.close}) {
            *price *= scale;
        }
        day.factor = 1;
    }
    return result;
}

std::optional<double> gainOf(const QList<Candle>& days, qsizetype at) {
    if (at < 1) {
        return std::nullopt;
    }
    const double former = days[at - 1].close * days[at - 1].factor;
    return former > 0 ? std::optional(100 * (days[at].close * days[at].factor / former - 1))
                      : std::nullopt;
}

QList<double> meanCloses(const QList<Candle>& days, int length) {
    QList<double> means(days.size(), std::numeric_limits<double>::quiet_NaN());
    double sum = 0;
    for (qsizetype at = 0; at < days.size(); ++at) {
        sum += days[at].close;
        if (at >= length) {
            sum -= days[at - length].close;
        }
        if (at >= length - 1) {
            means[at] = sum / length;
        }
    }
    return means;
}

QList<double> roundValues(const PriceRange& range) {
    constexpr double usualSteps = 5;
    const double step = roundStep((range.high - range.low) / usualSteps);
    QList<double> values;
    if (!std::isfinite(step) || step <= 0) {
        return values;
    }
    for (double at = std::ceil(range.low / step); at * step <= range.high; ++at) {
        values << at * step;
    }
    return values;
}

void VisibleDays::setTotal(qsizetype total) {
    total_ = total;
    showLast(usual);
}

void VisibleDays::showLast(qsizetype count) {
    count_ = std::min(total_, count);
    first_ = total_ - count_;
}

qsizetype VisibleDays::dayAt(double part) const {
    const auto at = static_cast<qsizetype>(std::floor(part * static_cast<double>(count_)));
    return first_ + std::clamp<qsizetype>(at, 0, std::max<qsizetype>(count_ - 1, 0));
}

void VisibleDays::zoom(double factor, double part) {
    const qsizetype day = dayAt(part);
    // A step that rounds to none would be no answer to the wheel.
    const double wanted = static_cast<double>(count_) * factor;
    const auto whole = static_cast<qsizetype>(factor > 1 ? std::ceil(wanted) : std::floor(wanted));
    count_ = std::clamp(whole, std::min(fewest, total_), total_);
    bringTo(day, part);
}

void VisibleDays::bringTo(qsizetype day, double part) {
    moveTo(first_ + day - dayAt(part));
}

void VisibleDays::moveTo(qsizetype first) {
    first_ = std::clamp<qsizetype>(first, 0, total_ - count_);
}

void VisibleDays::bringIntoSight(qsizetype day) {
    if (day < first_) {
        moveTo(day);
    } else if (day >= first_ + count_) {
        moveTo(day - count_ + 1);
    }
}

PriceRange pricesOf(const QList<Candle>& days, const VisibleDays& sight) {
    PriceRange range = {std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest()};
    for (qsizetype at = sight.first(); at < sight.first() + sight.count(); ++at) {
        range.low = std::min(range.low, days[at].low);
        range.high = std::max(range.high, days[at].high);
    }
    return range;
}

}  // namespace guanchao
