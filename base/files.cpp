#include "base/files.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSaveFile>
#include <cerrno>
#include <cstdio>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Empty if the file is written.
QString failureOfReplacing(const QString& target, const QByteArray& content,
                           QFile::Permissions added) {
    QSaveFile file(target);
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() &&
        (!added || file.setPermissions(file.permissions() | added)) && file.commit()) {
        return {};
    }
    return reasonOf(file);
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

QString systemReason(int error) {
    const bool full = error == ENOSPC || error == EDQUOT;
    return full ? u"磁盘已满"_s : qt_error_string(error);
}

}  // namespace

QString reasonOf(const QFileDevice& file) {
    // A write that stops halfway is no error to Qt.
    const bool full =
        file.error() == QFileDevice::NoError || file.error() == QFileDevice::ResourceError;
    return full ? u"磁盘已满"_s : file.errorString();
}

OperationError notWritten(const QString& path, const QString& reason) {
    return OperationError(u"无法写入 "_s + path + u"（"_s + reason +
                          u"）。请检查磁盘空间和文件夹的权限。"_s);
}

void replaceFile(const QString& target, const QByteArray& content, QFile::Permissions added) {
    const QString failure = failureOfReplacing(target, content, added);
    if (!failure.isEmpty()) {
        throw notWritten(target, failure);
    }
}

bool tryToReplaceFile(const QString& target, const QByteArray& content, QFile::Permissions added) {
    return failureOfReplacing(target, content, added).isEmpty();
}

FreshFile::FreshFile(const QString& target) : target_(target), path_(target + u".new"_s) {
    QFile::remove(path_);
}

FreshFile::~FreshFile() {
    QFile::remove(path_);
}

void FreshFile::takePlace() {
    if (!reachedTheDisk(path_) || std::rename(QFile::encodeName(path_).constData(),
                                              QFile::encodeName(target_).constData()) != 0) {
        throw notWritten(target_, systemReason(errno));
    }
}

void FreshFile::takeFreePlace() {
    if (!reachedTheDisk(path_)) {
        throw notWritten(target_, systemReason(errno));
    }
    QFile file(path_);
    if (!file.rename(target_)) {
        throw notWritten(target_, reasonOf(file));
    }
}

}  // namespace guanchao
