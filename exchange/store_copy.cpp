#include "exchange/store_copy.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <cerrno>
#include <cstdio>

#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

[[noreturn]] void raiseCopyFailure(const QString& source, const QString& target,
                                   const QString& reason) {
    throw OperationError(u"不能把 "_s + source + u" 复制为 "_s + target + u"（"_s + reason +
                         u"）。"_s);
}

bool moveOver(const QString& from, const QString& to) {
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

// False, with the reason in errno, if the disk has not taken what was written to the file.
bool reachedTheDisk(const QString& path) {
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return false;
    }
    const int result = ::fsync(file);
    const int reason = errno;
    ::close(file);
    errno = reason;
    return result == 0;
}

// What an interrupted write left beside the old file would be played back into the new one. It
// stays with the old file until the new one has taken its place.
void replaceWithJournal(const QString& fresh, const QString& target) {
    const QString journal = target + u"-journal"_s;
    const QString aside = journal + u".old"_s;
    const bool hadJournal = QFileInfo::exists(journal) && moveOver(journal, aside);
    if (!moveOver(fresh, target)) {
        const QString reason = qt_error_string(errno);
        if (hadJournal) {
            moveOver(aside, journal);
        }
        raiseCopyFailure(fresh, target, reason);
    }
    QFile::remove(aside);
}

}  // namespace

void replaceFile(const QString& target, const std::function<void(const QString& path)>& write) {
    const QString fresh = target + u".new"_s;
    const auto removeFresh = [&] {
        QFile::remove(fresh);
        QFile::remove(fresh + u"-journal"_s);
    };
    removeFresh();
    auto removeUnlessMoved = qScopeGuard(removeFresh);
    try {
        write(fresh);
    } catch (const StoreError& failure) {
        // The user knows the file by its own name.
        throw failure.path() == fresh
            ? StoreError(failure.reason(), target, failure.statement(), failure.fault())
            : failure;
    }
    if (!reachedTheDisk(fresh)) {
        raiseCopyFailure(fresh, target, qt_error_string(errno));
    }
    replaceWithJournal(fresh, target);
    removeUnlessMoved.dismiss();
}

void copyFile(const QString& source, const QString& target) {
    QFile file(source);
    if (!file.copy(target)) {
        raiseCopyFailure(source, target, file.errorString());
    }
    QFile::setPermissions(target, QFile::permissions(target) | QFile::WriteOwner);
}

void copyOver(const QString& source, const QString& target) {
    replaceFile(target, [&](const QString& path) { copyFile(source, path); });
}

void copyStore(const StoreFile& source, const QString& target) {
    Connection connection = source.open();
    // Never committed, since nothing is written. The lock goes at the latest when the copy closes
    // the file: the system lets go of all locks of a process on a file that it closes once.
    const Transaction lock(connection);
    copyOver(source.path, target);
}

}  // namespace guanchao
