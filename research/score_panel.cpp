#include "research/score_panel.h"

#include <QHBoxLayout>

#include "base/values.h"
#include "grid/table_columns.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const std::array<QString, selectionHorizons> horizonNames = {u"当日"_s, u"一日"_s, u"二日"_s,
                                                             u"五日"_s, u"十日"_s};

void writeFigures(ResultGrid& grid, int row, const GainFigures& figures) {
    grid.setInteger(row, 2, figures.counted);
    grid.setReal(row, 3, 100.0 * figures.wins / std::max(figures.counted, 1));
    int col = 4;
    for (const double gain : {figures.mean, figures.median, figures.best, figures.worst}) {
        setGain(grid, row, col++, roundTo(gain, 2));
    }
}

}  // namespace

ScorePanel::ScorePanel(Dialogs& dialogs, Failures& failures, QWidget* parent)
    : QWidget(parent), view_(new GridView(this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    view_->setObjectName(u"figures"_s);
    view_->setAccessibleName(u"各持有期的统计"_s);
    view_->setHint(u"搜索以后，这里列出各持有期的统计"_s);
    view_->setGrid(figures_);
    view_->allowExport(dialogs, failures);
    row->addWidget(view_, 3);
    for (size_t at = 0; at < selectionHorizons; ++at) {
        histograms_[at] = new GainHistogram(horizonNames[at], this);
        row->addWidget(histograms_[at], 1);
    }
    constexpr int lines = 8;  // of the table with its header
    setFixedHeight(lines * (fontMetrics().height() + 6));
}

// Rows whose later price is missing are in none of the figures.
void ScorePanel::showScore(const SelectionScore& score) {
    const GridFill fill(figures_);
    QList<TableColumn> columns;
    for (const QString& title :
         {u"持有"_s, u"次数"_s, u"胜率%"_s, u"平均%"_s, u"中位数%"_s, u"最好%"_s, u"最差%"_s}) {
        columns << TableColumn{title, 700};
    }
    beginTable(figures_, columns, selectionHorizons);
    for (size_t at = 0; at < selectionHorizons; ++at) {
        const int row = static_cast<int>(at) + 1;
        figures_.setTextMatrix(row, 1, horizonNames[at]);
        writeFigures(figures_, row, score.figures(at));
        histograms_[at]->showGains(score.gains(at));
    }
}

}  // namespace guanchao
