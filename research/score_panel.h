// 统计图表 of 题材选股: the figures of each horizon as a table, and the histogram of its gains.
#pragma once

#include <QWidget>
#include <array>

#include "base/runs.h"
#include "grid/grid_view.h"
#include "grid/result_grid.h"
#include "platform/dialogs.h"
#include "research/gain_histogram.h"
#include "research/selection_score.h"

namespace guanchao {

class ScorePanel : public QWidget {
    Q_OBJECT

public:
    ScorePanel(Dialogs& dialogs, Failures& failures, QWidget* parent);

    void showScore(const SelectionScore& score);

private:
    ResultGrid figures_;
    GridView* view_;
    std::array<GainHistogram*, selectionHorizons> histograms_ = {};
};

}  // namespace guanchao
