// The trading days: those of SH000001 in the first history database, oldest first, with its closes
// in hundredths.
#pragma once

#include <vector>

#include "research/day_number.h"
#include "store/connection.h"

namespace guanchao {

class MarketCalendar {
public:
    // Raises StoreError.
    explicit MarketCalendar(Connection& firstHistory);

    size_t size() const { return days_.size(); }
    DayNumber day(size_t at) const { return days_[at]; }
    double close(size_t at) const { return closes_[at]; }

    // In percent; NaN on the first day.
    double gain(size_t at) const;
    // Over so many days, this one among them; NaN where there are fewer.
    double mean(size_t at, size_t days) const;

    // The first day from this one on, the first one behind it; size() behind the last.
    size_t firstFrom(DayNumber day) const;
    size_t firstBehind(DayNumber day) const;

private:
    std::vector<DayNumber> days_;
    std::vector<double> closes_;
    std::vector<double> sums_;  // of the closes up to a day
};

}  // namespace guanchao
