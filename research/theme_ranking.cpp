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
    : market_(market), counts_(market.memberships().themeCount()) {}

const std::vector<ThemeOfDay>& ThemeRanking::of(const MarketDay& day) {
    for (size_t theme = 0; theme < counts_.size(); ++theme) {
        counts_[theme] = {static_cast<std::int32_t>(theme)};
    }
    for (size_t row = 0; row < day.stocks.size(); ++row) {
        count(day, row);
    }
    ranked_.clear();
    std::ranges::copy_if(counts_, std::back_inserter(ranked_),
                         [](const ThemeOfDay& it) { return it.zhishu > 0; });
    std::ranges::sort(ranked_, {}, [this](const ThemeOfDay& it) {
        return std::pair(-keyOf(it), market_.memberships().placeByName(it.theme));
    });
    return ranked_;
}

void ThemeRanking::count(const MarketDay& day, size_t row) {
    const int atLimit = day.isAtLimit(row) ? 1 : 0;
    const int atOnePrice = day.isAtOnePriceOfLimit(row) ? 1 : 0;
    for (const std::int32_t theme : market_.memberships().themesOf(day.stocks[row])) {
        ThemeOfDay& it = counts_[static_cast<size_t>(theme)];
        ++it.zhishu;
        it.zhangtinshu += atLimit;
        it.yizishu += atOnePrice;
    }
}

// Summed in the order of the day's rows, on which the last digit depends.
GainsOfDay ThemeRanking::gains(std::int32_t theme, const MarketDay& day) const {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    double sum = 0;
    int count = 0;
    double best = none;
    for (size_t row = 0; row < day.stocks.size(); ++row) {
        const auto memberships =
            std::ranges::count(market_.memberships().themesOf(day.stocks[row]), theme);
        if (memberships == 0 || std::isnan(day.gains[row])) {
            continue;
        }
        const double gain = roundedInStatements(day.gains[row], 2);
        for (auto time = memberships; time > 0; --time) {
            sum += gain;
            ++count;
        }
        best = std::isnan(best) ? gain : std::max(best, gain);
    }
    return {count > 0 ? roundedInStatements(sum / count, 2) : none, best};
}

}  // namespace guanchao
