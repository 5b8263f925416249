// Volume and turnover, whose numbers are too long to read: painted in units of 万 and 亿.
#pragma once

#include <QString>
#include <optional>

#include "grid/result_grid.h"

namespace guanchao {

// True for the headers of volume and turnover: 成交量, 成交额, 成交金额.
bool isAmount(const QString& header);

// False below 10000, which is painted as it is.
bool hasShortForm(double number);

// The number in four digits and its unit ("891.2万", "23.41亿"); nothing where it has none.
std::optional<QString> shortAmount(double number);

// The same of a cell; nothing where its column is none of amounts, or it holds no number.
std::optional<QString> shortAmount(const ResultGrid& grid, int row, int col);

// No short amount is wider.
inline const QString widestShortAmount = QStringLiteral("888.8万");

}  // namespace guanchao
