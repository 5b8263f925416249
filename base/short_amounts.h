// Volume and turnover, whose numbers are too long to read, in units of 万 and 亿; sizes of files.
#pragma once

#include <QString>
#include <optional>

namespace guanchao {

// False below 10000, which is shown as it is.
bool hasShortForm(double number);

// The number in four digits and its unit ("891.2万", "23.41亿"); nothing where it has none.
std::optional<QString> shortAmount(double number);

// The size of a file: 12.3 MB.
QString sizeWords(qint64 bytes);

// No short amount is wider.
inline const QString widestShortAmount = QStringLiteral("888.8万");

}  // namespace guanchao
