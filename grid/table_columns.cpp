#include "grid/table_columns.h"

#include <cmath>

namespace guanchao {

void beginTable(ResultGrid& grid, const QList<TableColumn>& columns, qsizetype rows,
                int numberWidth) {
    grid.clear();
    grid.setRows(static_cast<int>(rows) + 1);
    grid.setCols(rows == 0 ? 1 : static_cast<int>(columns.size()) + 1);
    grid.setTextMatrix(0, 0, QStringLiteral("序号"));
    grid.setColWidth(0, numberWidth);
    for (int col = 1; col < grid.cols(); ++col) {
        grid.setTextMatrix(0, col, columns[col - 1].title);
        grid.setColWidth(col, columns[col - 1].width);
    }
    for (int row = 1; row < grid.rows(); ++row) {
        grid.setInteger(row, 0, row);
    }
}

void setGain(ResultGrid& grid, int row, int col, double gain) {
    if (!std::isnan(gain)) {
        grid.setReal(row, col, gain);
        grid.setCellForeColor(row, col, signColour(grid, row, col));
    }
}

}  // namespace guanchao
