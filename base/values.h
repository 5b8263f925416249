// Text and number rules that the statements, the grids and the input boxes share: how a typed text
// is read as a number, how a number is rounded, and how numbers and times are written as text.
// Nothing here fails: a text without a number reads as 0.
#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <optional>

namespace guanchao {

// The number at the start of the text, blanks before it skipped; 0 if there is none.
double numericPrefix(QStringView text);

// True if the whole text, trimmed, is one number.
bool readsAsNumber(QStringView text);

// The nearest whole number; a half goes to the even neighbour.
double roundToWhole(double value);

// The 16-bit whole number that the text's leading number rounds to; nothing outside that range.
std::optional<qint16> wholeNumber16(QStringView text);

// The same for 32 bits.
std::optional<qint32> wholeNumber32(QStringView text);

// The nearest value of that many decimals; a tie goes to the even digit ("Round").
double roundTo(double value, int decimals);

// The number as a statement carries it: at most 15 significant digits, no needless zeros.
QString numberText(double value);

// The number as a grid shows it ("##0.00"): two decimals, a half away from zero.
QString twoDecimals(double value);
// What that text reads as.
double toTwoDecimals(double value);

// The number as a label shows a whole one ("##0"): no decimals, a half away from zero.
QString noDecimals(double value);

// "yyyy-MM-dd hh:mm:ss", hours 00 to 23: the one form in which the stores keep a moment.
QString timeText(const QDateTime& moment);

// The same of the day's first moment.
QString timeText(QDate day);

// "yyyy-MM-dd".
QString dateText(QDate day);

// The text without blanks at its ends. Only the blank itself counts: a name may end in another kind
// of space and must come back as it is.
QString trimBlanks(const QString& text);

// The text as a statement takes it: between apostrophes, each of its own doubled. What no text of a
// store can hold (U+0000) is left out.
QString quoted(QString text);
// Each of the texts so, with commas between them: what stands behind "in" in its brackets.
QString quotedList(const QStringList& texts);

// The same for the name of a table or an index.
QString quotedName(QString name);

// The text if it has no more characters than that, else its beginning and "…".
QString shortened(const QString& text, qsizetype most);

// How much of a name or of a message is shown; more fills no screen and takes seconds to lay out.
inline constexpr qsizetype longestShownName = 200;
inline constexpr qsizetype longestShownMessage = 1000;

// 空转换: blank becomes empty, anything else comes back as it is.
QString kongzhuanhuan(const QString& value);

}  // namespace guanchao
