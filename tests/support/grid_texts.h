// What a result grid holds, as tests compare it.
#pragma once

#include <QStringList>

#include "grid/result_grid.h"

namespace guanchao {

// The cells of a row, joined by "|".
inline QString rowText(const ResultGrid& grid, int row) {
    QStringList cells;
    for (int col = 0; col < grid.cols(); ++col) {
        cells << grid.textMatrix(row, col);
    }
    return cells.join(u'|');
}

// The rows likewise, header first.
inline QStringList rowTexts(const ResultGrid& grid) {
    QStringList rows;
    for (int row = 0; row < grid.rows(); ++row) {
        rows << rowText(grid, row);
    }
    return rows;
}

// The cells of a column, header first.
inline QStringList columnTexts(const ResultGrid& grid, int col) {
    QStringList texts;
    for (int row = 0; row < grid.rows(); ++row) {
        texts << grid.textMatrix(row, col);
    }
    return texts;
}

}  // namespace guanchao
