#include "research/laboratory/period_table.h"

#include <algorithm>

namespace guanchao {

namespace {

double percent(double now, double before) {
    return (now / before - 1) * 100;
}

class YearCounter {
public:
    YearCounter(int year, const BacktestDay& before)
        : before_(before), month_(before), highest_(before.capital) {
        gains_.year = year;
    }

    void take(const BacktestDay& day) {
        const int month = day.day / 100 % 100 - 1;
        if (month != monthNumber_) {
            monthNumber_ = month;
            month_ = last_ ? *last_ : before_;
        }
        highest_ = std::max(highest_, day.capital);
        gains_.months.at(static_cast<size_t>(month)) = percent(day.capital, month_.capital);
        gains_.gain = percent(day.capital, before_.capital);
        gains_.indexGain = percent(day.index, before_.index);
        gains_.drawdown = std::min(gains_.drawdown, percent(day.capital, highest_));
        last_ = day;
    }

    const YearOfGains& gains() const { return gains_; }

private:
    BacktestDay before_;  // the last day of the year before
    BacktestDay month_;   // of the month before
    std::optional<BacktestDay> last_;
    double highest_;
    int monthNumber_ = -1;
    YearOfGains gains_{};
};

}  // namespace

QList<YearOfGains> yearsOf(const QList<BacktestDay>& days) {
    QList<YearOfGains> years;
    BacktestDay before{0, 1, 1, 0};
    for (auto day = days.begin(); day != days.end();) {
        const int year = yearOf(day->day);
        YearCounter counter(year, before);
        for (; day != days.end() && yearOf(day->day) == year; ++day) {
            counter.take(*day);
            before = *day;
        }
        years << counter.gains();
    }
    return years;
}

}  // namespace guanchao
