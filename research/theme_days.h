// The themes of each day that had a stock at its limit, from the days of all stocks, counted once
// for all rules: a theme has today's stocks on every day.
#pragma once

#include <span>

#include "research/market_columns.h"

namespace guanchao {

struct ThemeDay {
    std::int32_t theme;
    int zhishu;       // 只数, stocks with a row that day
    int zhangtinshu;  // 涨停数, up by more than 9.5 % at the high of the day
    double gain;      // mean of its stocks in percent, not rounded
};

class ThemeDays {
public:
    // `meanwhile` is called between two days with how many are done.
    ThemeDays(const MarketColumns& market, const MarketColumns::Meanwhile& meanwhile);

    // Those with most stocks at their limit first, equals by name.
    std::span<const ThemeDay> of(DayNumber day) const;

private:
    std::map<DayNumber, std::vector<ThemeDay>> days_;
};

}  // namespace guanchao
