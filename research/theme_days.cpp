#include "research/theme_days.h"

#include <algorithm>
#include <cmath>

namespace guanchao {

namespace {

struct Sum {
    int zhishu = 0;
    int zhangtinshu = 0;
    int gains = 0;
    double gain = 0;
};

void addRow(std::vector<Sum>& sums, std::span<const std::int32_t> themes, double gain,
            bool isAtLimit) {
    const bool hasGain = !std::isnan(gain);
    for (const std::int32_t theme : themes) {
        Sum& sum = sums[static_cast<size_t>(theme)];
        ++sum.zhishu;
        sum.zhangtinshu += isAtLimit ? 1 : 0;
        sum.gains += hasGain ? 1 : 0;
        sum.gain += hasGain ? gain : 0;
    }
}

std::vector<ThemeDay> themesOf(const MarketDay& day, const Memberships& memberships) {
    std::vector<Sum> sums(memberships.themeCount());
    for (size_t row = 0; row < day.stocks.size(); ++row) {
        addRow(sums, memberships.themesOf(day.stocks[row]), day.gains[row], day.isAtLimit(row));
    }
    std::vector<ThemeDay> themes;
    for (size_t theme = 0; theme < sums.size(); ++theme) {
        const Sum& sum = sums[theme];
        if (sum.zhangtinshu > 0) {
            themes.push_back({static_cast<std::int32_t>(theme), sum.zhishu, sum.zhangtinshu,
                              sum.gain / sum.gains});
        }
    }
    std::ranges::sort(themes, {}, [&](const ThemeDay& it) {
        return std::pair(-it.zhangtinshu, memberships.placeByName(it.theme));
    });
    return themes;
}

}  // namespace

ThemeDays::ThemeDays(const MarketColumns& market, const MarketColumns::Meanwhile& meanwhile) {
    const int total = static_cast<int>(market.days().size());
    int done = 0;
    for (const auto& [number, day] : market.days()) {
        meanwhile(done++, total);
        std::vector<ThemeDay> themes = themesOf(day, market.memberships());
        if (!themes.empty()) {
            days_.emplace(number, std::move(themes));
        }
    }
}

std::span<const ThemeDay> ThemeDays::of(DayNumber day) const {
    const auto found = days_.find(day);
    return found == days_.end() ? std::span<const ThemeDay>() : found->second;
}

}  // namespace guanchao
