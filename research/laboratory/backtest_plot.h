// The plot of a back-test: the capital, the index and the drawdown over the days, in percent.
#pragma once

#include "frame/day_plot.h"
#include "research/laboratory/backtest.h"

namespace guanchao {

class BacktestPlot : public DayPlot {
    Q_OBJECT

public:
    explicit BacktestPlot(QWidget* parent = nullptr);

    void show(const QList<BacktestDay>& days);
};

}  // namespace guanchao
