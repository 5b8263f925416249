// The plot of a theme against the market: the running sums of both and their difference over the
// days, in percent.
#pragma once

#include "frame/day_plot.h"
#include "research/theme_history.h"

namespace guanchao {

class HistoryPlot : public DayPlot {
    Q_OBJECT

public:
    explicit HistoryPlot(QWidget* parent = nullptr);

    // Without a theme only the market's line shows.
    void showPoints(const QList<HistoryPoint>& points, bool hasTheme);
};

}  // namespace guanchao
