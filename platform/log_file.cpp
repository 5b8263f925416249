#include "platform/log_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <algorithm>
#include <cstdio>
#include <utility>

#include "base/log_words.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 secondsOfRepeats = 600;
constexpr qsizetype mostRemembered = 100;
QtMessageHandler formerHandler = nullptr;

// A page of the browser may say anything there.
bool isOfPage(const QMessageLogContext& context) {
    return qstrcmp(context.category, "js") == 0;
}

void keepWarning(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    const bool isWarning = type != QtDebugMsg && type != QtInfoMsg;
    if (isWarning && !isOfPage(context)) {
        const bool isOfToolkit = std::ranges::all_of(text, [](QChar c) { return c < u'\x80'; });
        writeLog({LogKind::warning, QString::fromLatin1(context.category),
                  isOfToolkit ? text : headOf(text)});
    }
    if (formerHandler) {
        formerHandler(type, context, text);
    }
}

QString formerPath(const QString& path) {
    return path.chopped(4) + u".以前.log"_s;
}

qint64 sizeOf(const QByteArray& path) {
    struct stat found = {};
    return ::stat(path.constData(), &found) == 0 ? found.st_size : 0;
}

bool endsInsideLine(int file, qint64 size) {
    char last = '\n';
    return size > 0 && ::pread(file, &last, 1, size - 1) == 1 && last != '\n';
}

// All of it or nothing. Not by the toolkit, which warns, and so would come here again.
void append(const QByteArray& path, QByteArray line) {
    constexpr int owner = 0600;
    const int file =
        ::open(path.constData(), O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK, owner);
    if (file < 0) {
        return;
    }
    const qint64 size = ::lseek(file, 0, SEEK_END);
    if (endsInsideLine(file, size)) {
        line.prepend('\n');
    }
    if (::write(file, line.constData(), static_cast<size_t>(line.size())) != line.size()) {
        [[maybe_unused]] const int undone = ::ftruncate(file, size);
    }
    ::close(file);
}

QString wordsOf(const LogEntry& entry) {
    QStringList parts = {wordOf(entry.kind), entry.doing, entry.happened};
    if (entry.took) {
        constexpr double second = 1000;
        parts << u"%1 秒"_s.arg(static_cast<double>(entry.took->count()) / second, 0, 'f', 1);
    }
    return parts.join(u'\t');
}

}  // namespace

LogFile::LogFile(const QString& path, const Clock& clock, qint64 most)
    : path_(QFile::encodeName(path)),
      former_(QFile::encodeName(formerPath(path))),
      clock_(clock),
      most_(most) {
    setLog(this);
    formerHandler = qInstallMessageHandler(keepWarning);
}

LogFile::~LogFile() {
    qInstallMessageHandler(formerHandler);
    setLog(nullptr);
}

void LogFile::write(const LogEntry& entry) {
    const QString words = wordsOf(entry);
    if (entry.kind == LogKind::run || entry.kind == LogKind::program) {
        writeLine(words);
    } else if (!isRepeated(words)) {
        const int times = std::exchange(repeats_[words].since, 0);
        repeats_[words].written = clock_.now();
        writeLine(times == 0 ? words : words + u"\t此前还有 %1 次"_s.arg(times));
    }
}

bool LogFile::isRepeated(const QString& words) {
    const auto known = repeats_.find(words);
    if (known == repeats_.end() || known->written.secsTo(clock_.now()) >= secondsOfRepeats) {
        if (repeats_.size() > mostRemembered) {
            repeats_.clear();
        }
        return false;
    }
    ++known->since;
    return true;
}

void LogFile::writeLine(const QString& words) {
    const QByteArray line =
        (clock_.now().toString(u"yyyy-MM-dd hh:mm:ss"_s) + u'\t' + words + u'\n').toUtf8();
    const bool isFull = sizeOf(path_) + line.size() > most_;
    if (!isFull || std::rename(path_.constData(), former_.constData()) == 0) {
        append(path_, line);
    }
}

QStringList lastLines(const QString& path, const QList<LogKind>& kinds, qsizetype most) {
    QStringList words;
    for (const LogKind it : kinds) {
        words << wordOf(it);
    }
    QStringList found;
    for (const QString& it : {formerPath(path), path}) {
        QFile file(it);
        if (file.open(QIODevice::ReadOnly)) {
            const QString text = QString::fromUtf8(file.read(2 * LogFile::standardMost));
            for (const QString& line : text.split(u'\n', Qt::SkipEmptyParts)) {
                if (words.contains(line.section(u'\t', 1, 1))) {
                    found << line;
                }
            }
        }
    }
    return found.last(std::min(most, found.size()));
}

}  // namespace guanchao
