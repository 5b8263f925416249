#include "exchange/store_copy.h"

#include <QFile>
#include <QFileInfo>

#include "base/activity.h"
#include "base/files.h"
#include "store/fresh_store.h"
#include "store/sqlite.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 blockSize = qint64(64) * 1024;

// For what is copied as the files of the user's own: it may be written to, whatever its source is.
void takePermissions(const QString& source, const QString& target) {
    QFile::setPermissions(target, QFile::permissions(source) | QFile::WriteOwner);
}

// The bytes of a store as its own connection reads them. Opened a second time and closed, the file
// would lose the locks of this whole process: the system lets go of all of them.
class StoreBytes {
public:
    explicit StoreBytes(const Connection& connection) : connection_(connection) {
        sqlite3_file_control(connection.handle(), "main", SQLITE_FCNTL_FILE_POINTER, &file_);
        require(file_->pMethods->xFileSize(file_, &size_));
    }

    qint64 size() const { return size_; }
    QByteArray block(qint64 offset) const {
        QByteArray bytes(qMin(blockSize, size_ - offset), Qt::Uninitialized);
        require(
            file_->pMethods->xRead(file_, bytes.data(), static_cast<int>(bytes.size()), offset));
        return bytes;
    }

private:
    void require(int result) const {
        if (result != SQLITE_OK) {
            throw StoreError(QString::fromUtf8(sqlite3_errstr(result)), connection_.path(), {},
                             StoreFault::unreadable);
        }
    }

    const Connection& connection_;
    sqlite3_file* file_ = nullptr;
    sqlite3_int64 size_ = 0;
};

void writeBytes(const StoreBytes& bytes, const QString& target,
                const std::function<void()>& blockDone) {
    QFile file(target);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        throw notWritten(target, reasonOf(file));
    }
    for (qint64 offset = 0; offset < bytes.size(); offset += blockSize) {
        const QByteArray block = bytes.block(offset);
        if (file.write(block) != block.size()) {
            throw notWritten(target, reasonOf(file));
        }
        blockDone();
    }
}

}  // namespace

void copyFile(const QString& source, const QString& target) {
    QFile from(source);
    QFile to(target);
    if (!from.open(QIODevice::ReadOnly)) {
        throw OperationError(u"无法读取 "_s + source + u"（"_s + reasonOf(from) + u"）。"_s);
    }
    if (!to.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered)) {
        throw notWritten(target, reasonOf(to));
    }
    while (!from.atEnd()) {
        const QByteArray block = from.read(blockSize);
        if (to.write(block) != block.size()) {
            throw notWritten(target, reasonOf(to));
        }
    }
    takePermissions(source, target);
}

void copyStore(const StoreFile& source, const QString& target,
               const std::function<void()>& blockDone) {
    replaceStore(target, [&](const QString& path) {
        Connection connection = source.open();
        const Transaction lock(connection);  // never committed, since nothing is written
        writeBytes(StoreBytes(connection), path, blockDone);
        takePermissions(source.path, path);
    });
}

int blocksOf(const StoreFile& store) {
    return static_cast<int>((QFileInfo(store.path).size() + blockSize - 1) / blockSize);
}

}  // namespace guanchao
