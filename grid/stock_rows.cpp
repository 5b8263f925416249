#include "grid/stock_rows.h"

#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

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

// 0 where there is none.
int dayColumn(const ResultGrid& grid) {
    static const QStringList headers = {u"日期"_s, u"买入日期"_s};
    int col = grid.cols() - 1;
    while (col > 0 && !headers.contains(grid.textMatrix(0, col))) {
        --col;
    }
    return col;
}

QDate dayIn(const ResultGrid& grid, int row, int col) {
    constexpr qsizetype dayLength = 10;
    return col > 0 ? QDate::fromString(grid.textMatrix(row, col).left(dayLength), Qt::ISODate)
                   : QDate();
}

}  // namespace

// An index has days as a stock has.
QString codeIn(const QString& text) {
    const QString dm = text.left(codeLength).toUpper();
    const bool goesOn = text.size() > codeLength && text[codeLength].isDigit();
    const bool isCode = isStockCode(dm) || isIndexCode(dm) || isOfBeijing(dm);
    return isCode && isWholeCode(dm) && !goesOn ? dm : QString();
}

bool tellsStocks(const ResultGrid& grid) {
    return codeColumn(grid) > 0;
}

QList<StockOfRow> stocksOf(const ResultGrid& grid) {
    QList<StockOfRow> stocks;
    const int col = codeColumn(grid);
    const int dayCol = dayColumn(grid);
    for (int row = 1; col > 0 && row < grid.rows(); ++row) {
        const QString dm = codeIn(grid.textMatrix(row, col));
        if (!dm.isEmpty()) {
            stocks << StockOfRow{row, dm, dayIn(grid, row, dayCol)};
        }
    }
    return stocks;
}

}  // namespace guanchao
