// What is painted shorter than it is stored: volume and turnover in units of 万 and 亿, days
// without their midnight.
#pragma once

#include <QString>
#include <optional>

#include "base/short_amounts.h"
#include "grid/result_grid.h"

namespace guanchao {

// True for the headers of volume and turnover: 成交量, 成交额, 成交金额.
bool isAmount(const QString& header);

// The short form of a cell; nothing where its column is none of amounts, or it holds no number.
std::optional<QString> shortAmount(const ResultGrid& grid, int row, int col);

// A day without the midnight that stores put behind it; other texts as they are.
QString withoutMidnight(const QString& text);

}  // namespace guanchao
