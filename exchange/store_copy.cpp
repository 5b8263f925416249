#include "exchange/store_copy.h"

#include <QFile>
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

}  // namespace

void copyOver(const QString& source, const QString& target) {
    const QString fresh = target + u".new"_s;
    QFile::remove(fresh);
    auto removeFresh = qScopeGuard([&] { QFile::remove(fresh); });
    QFile file(source);
    if (!file.copy(fresh)) {
        raiseCopyFailure(source, target, file.errorString());
    }
    QFile::setPermissions(fresh, QFile::permissions(fresh) | QFile::WriteOwner);
    // What an interrupted write left beside the old file would be played back into the new one.
    QFile::remove(target + u"-journal"_s);
    if (std::rename(QFile::encodeName(fresh).constData(), QFile::encodeName(target).constData()) !=
        0) {
        raiseCopyFailure(source, target, qt_error_string(errno));
    }
    removeFresh.dismiss();
}

void copyStore(const StoreFile& source, const QString& target) {
    Connection connection = source.open();
    // Never committed, since nothing is written. The lock goes at the latest when the copy closes
    // the file: the system lets go of all locks of a process on a file that it closes once.
    const Transaction lock(connection);
    copyOver(source.path, target);
}

}  // namespace guanchao
