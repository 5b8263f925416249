// The log as a file: a line an entry, its time, kind, what was being done, what happened and how
// long it took between tabs, in UTF-8. A file that has grown takes the place of the one before it,
// 运行日志.以前.log, and another is begun; several processes may write the same one. What can't be
// written, on a full disk or in a folder without the permission, is told to nobody; the diagnosis
// asks.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include "base/log.h"
#include "platform/clock.h"

namespace guanchao {

inline const QString logOfProgram = QStringLiteral("运行日志.log");
inline const QString logOfCollector = QStringLiteral("采集日志.log");

class LogFile : public Log {
public:
    static constexpr qint64 standardMost = 1 << 20;

    // As long as it lives, all entries come here, and what the toolkit calls critical or fatal; its
    // other words go where they went. A file takes `most` bytes.
    LogFile(const QString& path, const Clock& clock, qint64 most = standardMost);
    ~LogFile() override;
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    void write(const LogEntry& entry) override;

private:
    // A failure that comes again and again is counted, and told after ever longer times.
    struct Repeats {
        QDateTime written;
        qint64 seconds = 0;  // for which it is only counted
        int since = 0;
    };

    void writeFailure(const QString& words);
    void writeLine(const QString& words);
    bool tryToWrite(const QByteArray& line) const;

    QByteArray path_;
    QByteArray former_;
    const Clock& clock_;
    qint64 most_;
    QHash<QString, Repeats> repeats_;  // by what was written
};

// The newest lines of these kinds, the oldest first, out of the file and the one before it.
QStringList lastLines(const QString& path, const QList<LogKind>& kinds, qsizetype most);

// Likewise those that this process could not write.
QStringList unwrittenLines(const QList<LogKind>& kinds, qsizetype most);

}  // namespace guanchao
