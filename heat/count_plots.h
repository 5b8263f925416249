// The plots beside the histories of the internet figures: of a theme or a company, and of a
// commodity.
#pragma once

#include "frame/day_plot.h"

namespace guanchao {

// News counts of one day and of the custom days; those of all days on an axis of their own.
class NewsPlot : public DayPlot {
    Q_OBJECT

public:
    explicit NewsPlot(QWidget* parent = nullptr);
};

// Rising and falling words and the total score.
class WordPlot : public DayPlot {
    Q_OBJECT

public:
    explicit WordPlot(QWidget* parent = nullptr);
};

}  // namespace guanchao
