// Volume and turnover, whose numbers are too long to read, in units of 万 and 亿; gains with their
// sign; sizes of files.
#pragma once

#include <QString>
#include <optional>

namespace guanchao {

// False below 10000, which is shown as it is.
bool hasShortForm(double number);

// The number in four digits and its unit ("891.2万", "23.41亿"); nothing where it has none.
std::optional<QString> shortAmount(double number);

// The same, but the whole number where it has no unit.
QString amountWords(double amount);

// In percent: "+1.20%"; of no number 无行情.
QString gainWords(double gain);

// The size of a file: "12.3 MB", "512 字节".
QString sizeWords(qint64 bytes);

// No short amount is wider.
inline const QString widestShortAmount = QStringLiteral("888.8万");

}  // namespace guanchao
