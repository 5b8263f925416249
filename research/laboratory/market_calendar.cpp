#include "research/laboratory/market_calendar.h"

#include <algorithm>
#include <limits>

#include "store/row_cursor.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();

}  // namespace

MarketCalendar::MarketCalendar(Connection& firstHistory) {
    RowCursor row(firstHistory,
                  u"select date(shijian),cast(sp as Double) from SH000001 where date(shijian) is"
                  u" not null and cast(sp as Double)>0 order by date(shijian),rowid"_s);
    while (row.next()) {
        const DayNumber day = dayNumber(row.text(0));
        if (days_.empty() || day > days_.back()) {
            days_.push_back(day);
            closes_.push_back(row.number(1));
            sums_.push_back((sums_.empty() ? 0 : sums_.back()) + closes_.back());
        }
    }
}

double MarketCalendar::gain(size_t at) const {
    return at == 0 ? none : (closes_[at] / closes_[at - 1] - 1) * 100;
}

double MarketCalendar::mean(size_t at, size_t days) const {
    if (at + 1 < days) {
        return none;
    }
    const double before = at + 1 == days ? 0 : sums_[at - days];
    return (sums_[at] - before) / static_cast<double>(days);
}

size_t MarketCalendar::firstFrom(DayNumber day) const {
    return static_cast<size_t>(std::ranges::lower_bound(days_, day) - days_.begin());
}

size_t MarketCalendar::firstBehind(DayNumber day) const {
    return static_cast<size_t>(std::ranges::upper_bound(days_, day) - days_.begin());
}

}  // namespace guanchao
