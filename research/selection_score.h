// How the stocks of a search would have gained: over their rows in the order of the query, for the
// day itself and one, two, five and ten days on. Gains are percent.
#pragma once

#include <QString>
#include <array>
#include <vector>

namespace guanchao {

inline constexpr size_t selectionHorizons = 5;

// What the score reads of a result row.
struct SelectionGains {
    QString riqi;                                 // 日期
    std::array<double, selectionHorizons> gains;  // 股涨幅, 后1涨, 后2涨, 后5涨, 后10涨
};

// One horizon over the rows that count and whose later price is known; all 0 where there are none.
struct GainFigures {
    int counted = 0;
    int wins = 0;  // gains above 0
    double mean = 0;
    double median = 0;
    double best = 0;
    double worst = 0;

    bool operator==(const GainFigures&) const = default;
};

class SelectionScore {
public:
    // `mergeDates` lets at most three rows of one date that stand together count.
    explicit SelectionScore(bool mergeDates = false) : mergeDates_(mergeDates) {}

    void take(const SelectionGains& row);

    // The score line, in which a later price that is missing, a gain below -90, counts as no gain.
    QString line() const;

    GainFigures figures(size_t horizon) const;
    // Of the rows behind these figures, in their order.
    const std::vector<double>& gains(size_t horizon) const { return gains_[horizon]; }

private:
    bool isMergedAway(const QString& riqi);

    bool mergeDates_;
    std::array<QString, 3> lastDates_;
    size_t rows_ = 0;
    int counted_ = 0;
    std::array<std::vector<double>, selectionHorizons> gains_;
};

}  // namespace guanchao
