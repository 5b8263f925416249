// A rule over the values of one or two of its fields: a back-test for each.
#pragma once

#include <functional>

#include "research/laboratory/backtest.h"

namespace guanchao {

struct SweepAxis {
    const RuleField* field = nullptr;
    double from = 0;
    double to = 0;
    double step = 1;

    // As far as the field takes them, from the first one on.
    QList<double> values() const;
};

// More takes too long and can't be read.
inline constexpr int mostSweepCells = 400;

struct SweepResult {
    const RuleField* across = nullptr;
    const RuleField* down = nullptr;  // null: one row
    QList<double> acrossValues;
    QList<double> downValues;  // one without meaning if there is one row
    QList<BacktestSum> sums;   // row by row

    const BacktestSum& at(qsizetype row, qsizetype col) const {
        return sums[row * acrossValues.size() + col];
    }
};

// `work` is told how many are done. Raises OperationError if the cells are too many or none, and
// what backtest() raises.
SweepResult sweep(const BacktestRule& rule, const SweepAxis& across,
                  const std::optional<SweepAxis>& down, LaboratoryHistory& history,
                  const std::vector<ReportDate>& reports, ResearchWork& work);

}  // namespace guanchao
