#include "platform/log_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <mutex>
#include <utility>

#include "base/log_words.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 fewestSecondsOfRepeats = 600;
constexpr qint64 mostSecondsOfRepeats = 21600;
constexpr qsizetype mostRemembered = 100;
QtMessageHandler formerHandler = nullptr;

std::mutex guardOfUnwritten;
QStringList unwritten;

// A page of the browser may say anything there.
bool isOfPage(const QMessageLogContext& context) {
    return qstrcmp(context.category, "js") == 0;
}

QString sourceOf(const QMessageLogContext& context) {
    const QString category = QString::fromLatin1(context.category);
    return category == u"default"_s ? u"界面库报错"_s : u"界面库报错 "_s + category;
}

// Its warnings are many and tell nothing to who looks for a fault of the program.
void takeMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    const bool isSerious = type == QtCriticalMsg || type == QtFatalMsg;
    if (isSerious && !isOfPage(context)) {
        const bool isOfToolkit = std::ranges::all_of(text, [](QChar c) { return c < u'\x80'; });
        writeLog({LogKind::toolkit, sourceOf(context), isOfToolkit ? text : headOf(text)});
    }
    if (formerHandler) {
        formerHandler(type, context, text);
    }
}

QString formerPath(const QString& path) {
    return path.chopped(4) + u".以前.log"_s;
}

// An open file of the log, which others may write and move away meanwhile. Not by the toolkit,
// which warns, and so would come here again.
class OpenLog {
public:
    explicit OpenLog(const QByteArray& path)
        : path_(path),
          file_(::open(path.constData(), O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK,
                       S_IRUSR | S_IWUSR)) {}
    ~OpenLog() {
        if (isOpen()) {
            ::close(file_);
        }
    }
    OpenLog(const OpenLog&) = delete;
    OpenLog& operator=(const OpenLog&) = delete;

    bool isOpen() const { return file_ >= 0; }
    // Waits for a moment only: another that was halted in the middle must not halt this one. True
    // too on a disk that knows no locks.
    bool lock() const {
        for (int tries = 0; tries < mostTries; ++tries) {
            const bool isTaken = ::flock(file_, LOCK_EX | LOCK_NB) == 0;
            if (isTaken || (errno != EWOULDBLOCK && errno != EINTR)) {
                return true;
            }
            ::usleep(betweenTries);
        }
        return false;
    }
    bool isInPlace() const {
        struct stat own = {};
        struct stat found = {};
        return ::fstat(file_, &own) == 0 && ::stat(path_.constData(), &found) == 0 &&
               own.st_ino == found.st_ino && own.st_dev == found.st_dev;
    }
    qint64 size() const { return ::lseek(file_, 0, SEEK_END); }
    // All of it or nothing. What broke off before is ended first.
    bool append(QByteArray line) const {
        const qint64 before = size();
        char last = '\n';
        if (before > 0 && ::pread(file_, &last, 1, before - 1) == 1 && last != '\n') {
            line.prepend('\n');
        }
        const auto length = static_cast<size_t>(line.size());
        const bool isWhole = ::write(file_, line.constData(), length) == line.size();
        if (!isWhole) {
            [[maybe_unused]] const int undone = ::ftruncate(file_, before);
        }
        return isWhole;
    }

private:
    static constexpr int mostTries = 50;
    static constexpr useconds_t betweenTries = 1000;

    const QByteArray& path_;
    int file_;
};

QStringList newestOf(QStringList lines, const QList<LogKind>& kinds, qsizetype most) {
    QStringList words;
    for (const LogKind it : kinds) {
        words << wordOf(it);
    }
    lines.removeIf([&](const QString& it) { return !words.contains(it.section(u'\t', 1, 1)); });
    return lines.last(std::min(most, lines.size()));
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
    formerHandler = qInstallMessageHandler(takeMessage);
}

LogFile::~LogFile() {
    qInstallMessageHandler(formerHandler);
    setLog(nullptr);
    for (const auto& [words, repeats] : repeats_.asKeyValueRange()) {
        if (repeats.since > 0) {
            writeLine(words + u"\t此后又有 %1 次"_s.arg(repeats.since));
        }
    }
}

void LogFile::write(const LogEntry& entry) {
    const QString words = wordsOf(entry);
    if (entry.kind == LogKind::failure || entry.kind == LogKind::toolkit) {
        writeFailure(words);
    } else {
        writeLine(words);
    }
}

void LogFile::writeFailure(const QString& words) {
    const QDateTime now = clock_.now();
    if (repeats_.size() > mostRemembered) {
        repeats_.clear();
    }
    Repeats& known = repeats_[words];
    if (known.written.isValid() && known.written.secsTo(now) < known.seconds) {
        ++known.since;
        return;
    }
    const int times = std::exchange(known.since, 0);
    known.written = now;
    known.seconds =
        times == 0 ? fewestSecondsOfRepeats : std::min(2 * known.seconds, mostSecondsOfRepeats);
    writeLine(times == 0 ? words : words + u"\t此前还有 %1 次"_s.arg(times));
}

void LogFile::writeLine(const QString& words) {
    const QString line = clock_.now().toString(u"yyyy-MM-dd hh:mm:ss"_s) + u'\t' + words;
    if (!tryToWrite((line + u'\n').toUtf8())) {
        const std::scoped_lock lock(guardOfUnwritten);
        unwritten << line;
        unwritten = unwritten.last(std::min(unwritten.size(), mostRemembered));
    }
}

// A file that is moved away while it is opened is no longer the log.
bool LogFile::tryToWrite(const QByteArray& line) const {
    constexpr int mostMoves = 10;
    for (int moves = 0; moves < mostMoves; ++moves) {
        const OpenLog log(path_);
        if (!log.isOpen()) {
            return false;
        }
        const bool isAlone = log.lock();
        const bool isInPlace = log.isInPlace();
        const bool isFull = log.size() > 0 && log.size() + line.size() > most_;
        if (!isAlone || (isInPlace && !isFull)) {
            return log.append(line);
        }
        if (isInPlace && std::rename(path_.constData(), former_.constData()) != 0) {
            return false;
        }
    }
    return false;
}

QStringList lastLines(const QString& path, const QList<LogKind>& kinds, qsizetype most) {
    QStringList all;
    for (const QString& it : {formerPath(path), path}) {
        QFile file(it);
        if (file.open(QIODevice::ReadOnly)) {
            const QString text = QString::fromUtf8(file.read(2 * LogFile::standardMost));
            all << text.split(u'\n', Qt::SkipEmptyParts);
        }
    }
    return newestOf(all, kinds, most);
}

QStringList unwrittenLines(const QList<LogKind>& kinds, qsizetype most) {
    const std::scoped_lock lock(guardOfUnwritten);
    return newestOf(unwritten, kinds, most);
}

}  // namespace guanchao
