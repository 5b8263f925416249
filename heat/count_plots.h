// The plots of the internet figures: beside the histories of a theme or a company, and of a
// commodity, and of the news of a day against its gains.
#pragma once

#include "frame/day_plot.h"
#include "frame/scatter_plot.h"

namespace guanchao {

// News counts of one day and of the custom days; those of all days on an axis of their own.
class NewsPlot : public DayPlot {
    Q_OBJECT

public:
    explicit NewsPlot(QWidget* parent = nullptr);
};

// 一日数量 alone, for where there is little room.
class OneDayNewsPlot : public DayPlot {
    Q_OBJECT

public:
    explicit OneDayNewsPlot(QWidget* parent = nullptr);
};

// Rising and falling words and the total score.
class WordPlot : public DayPlot {
    Q_OBJECT

public:
    explicit WordPlot(QWidget* parent = nullptr);
};

// Rises in red, falls in green.
class GainPlot : public ScatterPlot {
    Q_OBJECT

public:
    explicit GainPlot(QWidget* parent = nullptr);
};

}  // namespace guanchao
