#include "research/selection_score.h"

#include <algorithm>
#include <numeric>

#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The words before win rate and average of each horizon.
struct ScoreWords {
    QStringView rate;
    QStringView average;
};
constexpr std::array<ScoreWords, selectionHorizons> scoreWords = {{{u"当日胜率:", u"当日平均:"},
                                                                   {u" 一日胜率:", u"一日平均:"},
                                                                   {u" 二日胜率:", u"二日平均:"},
                                                                   {u" 五日胜率:", u"五日平均:"},
                                                                   {u" 十日胜率:", u"十日平均:"}}};

// A later price that was missing reads as a loss of nearly everything.
constexpr double missingBelow = -90;

int winsOf(const std::vector<double>& gains) {
    return static_cast<int>(
        std::count_if(gains.begin(), gains.end(), [](double gain) { return gain > 0; }));
}

double sumOf(const std::vector<double>& gains) {
    return std::accumulate(gains.begin(), gains.end(), 0.0);
}

double medianOf(std::vector<double> gains) {
    const auto middle = gains.begin() + static_cast<std::ptrdiff_t>(gains.size() / 2);
    std::nth_element(gains.begin(), middle, gains.end());
    if (gains.size() % 2 == 1) {
        return *middle;
    }
    return (*middle + *std::max_element(gains.begin(), middle)) / 2;
}

}  // namespace

void SelectionScore::take(const SelectionGains& row) {
    if (isMergedAway(row.riqi)) {
        return;
    }
    ++counted_;
    for (size_t at = 0; at < selectionHorizons; ++at) {
        if (at == 0 || row.gains[at] >= missingBelow) {
            gains_[at].push_back(row.gains[at]);
        }
    }
}

bool SelectionScore::isMergedAway(const QString& riqi) {
    QString& threeBefore = lastDates_[rows_ % lastDates_.size()];
    const bool merged = mergeDates_ && rows_ >= lastDates_.size() && threeBefore == riqi;
    threeBefore = riqi;
    ++rows_;
    return merged;
}

QString SelectionScore::line() const {
    QString text = u"总次数:"_s + QString::number(counted_);
    for (size_t at = 0; at < selectionHorizons; ++at) {
        const double rate = counted_ > 0 ? 1.0 * winsOf(gains_[at]) / counted_ * 100 : 0;
        const double average = counted_ > 0 ? sumOf(gains_[at]) / counted_ : 0;
        text += scoreWords[at].rate + numberText(roundTo(rate, 2)) + scoreWords[at].average +
                numberText(roundTo(average, 2));
    }
    return text;
}

GainFigures SelectionScore::figures(size_t horizon) const {
    const std::vector<double>& gains = gains_[horizon];
    if (gains.empty()) {
        return {};
    }
    const auto [worst, best] = std::minmax_element(gains.begin(), gains.end());
    const auto counted = static_cast<int>(gains.size());
    return {.counted = counted,
            .wins = winsOf(gains),
            .mean = sumOf(gains) / counted,
            .median = medianOf(gains),
            .best = *best,
            .worst = *worst};
}

}  // namespace guanchao
