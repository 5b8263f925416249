// The text files of users, in whatever encoding they come: GBK, UTF-8, or UTF-16 behind its mark.
// A byte that is no text shows as U+FFFD.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace guanchao {

struct ReadText {
    QString text;      // without its mark
    QString encoding;  // "GBK", "UTF-8", "UTF-16"; empty for ASCII, which reads the same in all
};

// Without a mark it is UTF-8 where all bytes have that form, but for a character cut at the end,
// and one at least takes three bytes, as Chinese does; else GBK, whose characters of two bytes may
// have the form of UTF-8's.
ReadText readText(const QByteArray& bytes);

// UTF-8 that is read as that text again: behind its mark where it would be taken for GBK.
QByteArray bytesOf(const QString& text);

// Each of carriage return, line feed, and both together ends a line.
QStringList linesOf(const QString& text);

struct TextFile {
    QStringList lines;
    QString encoding;  // as of ReadText
};

// Raises OperationError if the file can't be read, and for one that is no text: with NULs in it.
TextFile readTextFile(const QString& path);

// True if the line had bytes that are no text.
bool isBroken(const QString& line);

}  // namespace guanchao
