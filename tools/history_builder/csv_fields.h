// The fields of a line of CSV and the values in them. Failures raise std::runtime_error in Chinese.
#pragma once

#include <QDate>
#include <QList>
#include <QStringView>
#include <optional>

namespace guanchao {

// Without the blanks and quotes around them; a separator inside quotes is a letter like any other.
// Leaves them in `fields`, which point into the line.
void splitFields(QStringView line, QChar separator, QList<QStringView>& fields);

// True for what libraries write where there is no value: nothing, "-", "nan", "None", "null".
bool isMissing(QStringView text);

// 2026-11-20, 2026/11/20 or 20261120, a time behind it or not.
QDate dayFrom(QStringView text);

// Nothing if the text is no number. A file has a hundred million of them, for which Qt's own way is
// too slow.
std::optional<double> numberIn(QStringView text);

// Not below zero; the name is for the failure.
double numberFrom(const QString& name, QStringView text);
double aboveZero(const QString& name, QStringView text);
// Of yuan, in hundredths; one of them at least must be left.
qint64 priceFrom(const QString& name, QStringView text);

}  // namespace guanchao
