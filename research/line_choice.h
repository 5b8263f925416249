// The lines of a theme's plot as a list beside it, in which the pointer or the space bar switches
// each on and off. A line without any day in the plot can't be switched on.
#pragma once

#include <QListWidget>

#include "research/history_plot.h"

namespace guanchao {

class LineChoice : public QListWidget {
    Q_OBJECT

public:
    explicit LineChoice(QWidget* parent = nullptr);

    void setPlot(HistoryPlot& plot) { plot_ = &plot; }
    // After the plot shows another history.
    void showLines();

private:
    HistoryPlot* plot_ = nullptr;
};

}  // namespace guanchao
