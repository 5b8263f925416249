// The themes of a day by their stocks at the limit: the count of them less a fourth of all of its
// stocks that traded, in whole numbers, and 2; equals by name.
#pragma once

#include "research/market_columns.h"

namespace guanchao {

struct ThemeOfDay {
    std::int32_t theme = 0;
    int zhishu = 0;       // 只数, stocks with a row that day
    int zhangtinshu = 0;  // 涨停数, up by more than 9.5 % at the high of the day
    int yizishu = 0;      // 一字数, up by more than 9.5 % at one price all day
};

// The gains of a theme's stocks on a day, in percent with two decimals; NaN if none has one.
struct GainsOfDay {
    double mean;
    double best;
};

class ThemeRanking {
public:
    explicit ThemeRanking(const MarketColumns& market);

    // The best first, all that traded. Lasts until the next call.
    const std::vector<ThemeOfDay>& of(const MarketDay& day);

    GainsOfDay gains(std::int32_t theme, const MarketDay& day);

private:
    void countStocks(const MarketDay& day);
    void countAtLimit(const MarketDay& day);

    const MarketColumns& market_;
    std::vector<ThemeOfDay> counts_;  // by theme
    std::vector<ThemeOfDay> ranked_;
    std::vector<int> before_;   // by stock: its rows on the day that counts_ stands for
    std::vector<int> now_;      // by stock
    std::vector<int> members_;  // by stock: how often it belongs to a theme
};

}  // namespace guanchao
