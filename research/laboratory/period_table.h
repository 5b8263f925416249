// The gains of a back-test by years and months.
#pragma once

#include <array>
#include <optional>

#include "research/laboratory/backtest.h"

namespace guanchao {

struct YearOfGains {
    int year;
    std::array<std::optional<double>, 12> months;  // percent; none without a day
    double gain;
    double indexGain;
    double drawdown;  // within the year, 0 or below
};

// Oldest year first. The first period begins with the first day.
QList<YearOfGains> yearsOf(const QList<BacktestDay>& days);

}  // namespace guanchao
