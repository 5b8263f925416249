#include "grid/stock_rows.h"

#include "services/stock_code.h"

namespace guanchao {

namespace {

// 0, the column of the row numbers, where there is none.
int codeColumn(const ResultGrid& grid) {
    for (int col = 1; grid.rows() > 1 && col < grid.cols(); ++col) {
        if (!codeIn(grid.textMatrix(1, col)).isEmpty()) {
            return col;
        }
    }
    return 0;
}

}  // namespace

// An index has days as a stock has.
QString codeIn(const QString& text) {
    const QString dm = text.left(codeLength).toUpper();
    const bool goesOn = text.size() > codeLength && text[codeLength].isDigit();
    const bool isCode = isStockCode(dm) || isIndexCode(dm) || isOfBeijing(dm);
    return isCode && isWholeCode(dm) && !goesOn ? dm : QString();
}

QList<StockOfRow> stocksOf(const ResultGrid& grid) {
    QList<StockOfRow> stocks;
    const int col = codeColumn(grid);
    for (int row = 1; col > 0 && row < grid.rows(); ++row) {
        const QString dm = codeIn(grid.textMatrix(row, col));
        if (!dm.isEmpty()) {
            stocks << StockOfRow{row, dm};
        }
    }
    return stocks;
}

}  // namespace guanchao
