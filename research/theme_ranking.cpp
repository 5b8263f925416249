#include "research/theme_ranking.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "store/dialect.h"

namespace guanchao {

namespace {

int keyOf(const ThemeOfDay& it) {
    return it.zhangtinshu - it.zhishu / 4 - 2;
}

}  // namespace

ThemeRanking::ThemeRanking(const MarketColumns& market)
    : market_(market),
      counts_(market.memberships().themeCount()),
      before_(market.memberships().stockCount()),
      now_(before_.size()),
      members_(before_.size()) {
    for (size_t theme = 0; theme < counts_.size(); ++theme) {
        counts_[theme].theme = static_cast<std::int32_t>(theme);
    }
}

const std::vector<ThemeOfDay>& ThemeRanking::of(const MarketDay& day) {
    countStocks(day);
    countAtLimit(day);
    ranked_.clear();
    std::ranges::copy_if(counts_, std::back_inserter(ranked_),
                         [](const ThemeOfDay& it) { return it.zhishu > 0; });
    std::ranges::sort(ranked_, {}, [this](const ThemeOfDay& it) {
        return std::pair(-keyOf(it), market_.memberships().placeByName(it.theme));
    });
    return ranked_;
}

// From one day to the next nearly the same stocks trade: only what changes is counted.
void ThemeRanking::countStocks(const MarketDay& day) {
    std::ranges::fill(now_, 0);
    for (const std::int32_t stock : day.stocks) {
        ++now_[static_cast<size_t>(stock)];
    }
    for (size_t stock = 0; stock < now_.size(); ++stock) {
        const int change = now_[stock] - before_[stock];
        if (change == 0) {
            continue;
        }
        for (const std::int32_t theme :
             market_.memberships().themesOf(static_cast<std::int32_t>(stock))) {
            counts_[static_cast<size_t>(theme)].zhishu += change;
        }
    }
    std::swap(before_, now_);
}

void ThemeRanking::countAtLimit(const MarketDay& day) {
    for (ThemeOfDay& it : counts_) {
        it.zhangtinshu = 0;
        it.yizishu = 0;
    }
    for (size_t row = 0; row < day.stocks.size(); ++row) {
        const int atLimit = day.isAtLimit(row) ? 1 : 0;
        const int atOnePrice = day.isAtOnePriceOfLimit(row) ? 1 : 0;
        if (atLimit + atOnePrice == 0) {
            continue;
        }
        for (const std::int32_t theme : market_.memberships().themesOf(day.stocks[row])) {
            counts_[static_cast<size_t>(theme)].zhangtinshu += atLimit;
            counts_[static_cast<size_t>(theme)].yizishu += atOnePrice;
        }
    }
}

// Summed in the order of the day's rows, on which the last digit depends.
GainsOfDay ThemeRanking::gains(std::int32_t theme, const MarketDay& day) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    std::ranges::fill(members_, 0);
    for (const std::int32_t stock : market_.memberships().stocksOf(theme)) {
        ++members_[static_cast<size_t>(stock)];
    }
    double sum = 0;
    int count = 0;
    double best = none;
    for (size_t row = 0; row < day.stocks.size(); ++row) {
        const int memberships = members_[static_cast<size_t>(day.stocks[row])];
        if (memberships == 0 || std::isnan(day.gains[row])) {
            continue;
        }
        const double gain = roundedInStatements(day.gains[row], 2);
        for (int time = 0; time < memberships; ++time) {
            sum += gain;
            ++count;
        }
        best = std::isnan(best) ? gain : std::max(best, gain);
    }
    return {count > 0 ? roundedInStatements(sum / count, 2) : none, best};
}

}  // namespace guanchao
