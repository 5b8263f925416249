// Paints a small line at the right of the cells of one column: the figures of the row's item over
// the last days. What it shows is told to assistive tools and under the pointer by the item notes
// of the grid.
#pragma once

#include <QHash>

#include "grid/cell_delegate.h"

namespace guanchao {

class SparklineDelegate : public CellDelegate {
public:
    SparklineDelegate(Colour colour, int twips, QObject* parent)
        : CellDelegate(parent), colour_(colour), twips_(twips) {}

    // By the text of the cell, a figure for each day; NaN where there is none.
    void setLines(QHash<QString, QList<double>> lines) { lines_ = std::move(lines); }
    const QHash<QString, QList<double>>& lines() const { return lines_; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

private:
    Colour colour_;
    int twips_;
    QHash<QString, QList<double>> lines_;
};

}  // namespace guanchao
