// The text files of users, in whatever encoding they come: GBK, UTF-8, or UTF-16 behind its mark.
// A byte that is no text shows as U+FFFD.
#pragma once

#include <QByteArray>
#include <QFile>
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

// The lines of a file that is too large to be held, some thousand at a time. The encoding is told
// by the first of them that aren't ASCII. Raises OperationError as readTextFile.
class TextBlocks {
public:
    explicit TextBlocks(const QString& path);

    // The next lines; none at the end.
    QStringList next();

    qint64 bytesRead() const { return file_.pos() - rest_.size(); }

private:
    QByteArray wholeLines();

    QFile file_;
    QByteArray rest_;  // the line that the last block has cut
    QString encoding_;
};

// True if the line had bytes that are no text.
bool isBroken(const QString& line);

}  // namespace guanchao
