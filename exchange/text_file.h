// The lines of a theme text file. Files are in GBK; one that is valid UTF-8 and not plain ASCII is
// UTF-8, with or without a byte order mark.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace guanchao {

// A line ends at a carriage return, with or without a line feed behind it; in a file without any
// carriage return it ends at a line feed.
QStringList linesOf(const QByteArray& bytes);

// Raises OperationError if the file can't be read.
QStringList readLines(const QString& path);

// True if the line had bytes that are no text.
bool isBroken(const QString& line);

}  // namespace guanchao
