// Which stock a row of a grid is about.
#pragma once

#include <QDate>

#include "grid/result_grid.h"

namespace guanchao {

struct StockOfRow {
    int row = 0;
    QString dm;      // with its exchange, in upper case
    QDate day = {};  // of the column 日期 or 买入日期, if there is one
};

// Whether the rows of the grid are about stocks, as its first row tells.
bool tellsStocks(const ResultGrid& grid);

// Of the rows that have one, in their order: the first column whose cell in the first row is, or
// begins with, a code tells it.
QList<StockOfRow> stocksOf(const ResultGrid& grid);

// The code that the text is or begins with; empty if there is none.
QString codeIn(const QString& text);

}  // namespace guanchao
