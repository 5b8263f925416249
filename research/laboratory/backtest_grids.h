// What comes out of back-tests, as tables.
#pragma once

#include "grid/result_grid.h"
#include "research/laboratory/backtest.h"
#include "research/laboratory/period_table.h"
#include "research/laboratory/sweep.h"

namespace guanchao {

// 累计 12.30%，上证指数 …: the result in a line.
QString sumWords(const BacktestResult& result);

void showYears(ResultGrid& grid, const QList<YearOfGains>& years);
inline constexpr int tradeBuyDayColumn = 6;
void showTrades(ResultGrid& grid, const QList<Trade>& trades);
// The gains behind each announcement, and what they come to in a line.
void showReturns(ResultGrid& grid, const QList<ReportReturn>& returns);
QString returnsWords(const QList<ReportReturn>& returns);
// The days of the curve, to be exported.
void showCurve(ResultGrid& grid, const QList<BacktestDay>& days);

// A row for each rule; of the fields those in which the rules differ.
void showComparison(ResultGrid& grid, const QStringList& names,
                    const QList<BacktestResult>& results);

enum class SweepMeasure : std::uint8_t { gain, drawdown, winShare, trades };

QStringList sweepMeasures();

// The values of the first field across, of the second one down, on a ground that tells how good
// each is: a gain red, a loss green, what has no sign by its distance from the middle.
void showSweep(ResultGrid& grid, const SweepResult& sweep, SweepMeasure measure);

}  // namespace guanchao
