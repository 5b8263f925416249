#include "exchange/store_copy.h"

#include <QFile>

#include "base/activity.h"
#include "store/store_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

void copyFile(const QString& source, const QString& target) {
    QFile file(source);
    if (!file.copy(target)) {
        throw OperationError(u"不能把 "_s + source + u" 复制为 "_s + target + u"（"_s +
                             file.errorString() + u"）。"_s);
    }
    QFile::setPermissions(target, QFile::permissions(target) | QFile::WriteOwner);
}

void copyStore(const StoreFile& source, const QString& target) {
    Connection connection = source.open();
    // Never committed, since nothing is written. The lock goes at the latest when the copy closes
    // the file: the system lets go of all locks of a process on a file that it closes once.
    const Transaction lock(connection);
    replaceStore(target, [&](const QString& path) { copyFile(source.path, path); });
}

}  // namespace guanchao
