#include "base/files.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSaveFile>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Empty if the file is written.
QString failureOfReplacing(const QString& target, const QByteArray& content,
                           QFile::Permissions added) {
    QSaveFile file(target);
    // What only the flush of a commit finds, the commit does not tell.
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush() &&
        (!added || file.setPermissions(file.permissions() | added)) && file.commit()) {
        return {};
    }
    const int error = errno;
    // Qt has no words for the link by which a file without a name gets one.
    const bool isToldBySystem = error != 0 && file.errorString() == u"Unknown error"_s;
    return isToldBySystem ? systemReason(error) : reasonOf(file);
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

// Ends the name of a file that is being written beside the one that it replaces.
const QString freshEnd = u".new"_s;

const QString diskFull = u"磁盘已满"_s;

// What the system tells of, in words for the user.
struct SystemReason {
    int error;
    QString words;
};

const SystemReason systemReasons[] = {
    {ENOSPC, diskFull},
    {EDQUOT, diskFull},
    {EIO, u"磁盘读写出错"_s},
    {EACCES, u"没有访问的权限"_s},
    {EPERM, u"没有访问的权限"_s},
    {EROFS, u"磁盘只能读取"_s},
    {ENOENT, u"没有这个文件夹或文件"_s},
};

}  // namespace

QString systemReason(int error) {
    const auto* known = std::ranges::find(systemReasons, error, &SystemReason::error);
    return known == std::end(systemReasons) ? qt_error_string(error) : known->words;
}

QString systemReasonIn(const QString& text) {
    const auto* known = std::ranges::find_if(
        systemReasons, [&](const SystemReason& it) { return text.contains(it.words); });
    return known == std::end(systemReasons) ? QString() : known->words;
}

// Qt keeps the system's reason as the system's words alone.
QString reasonOf(const QFileDevice& file) {
    if (file.error() == QFileDevice::NoError) {
        return systemReason(ENOSPC);  // a write that stops halfway is no error to Qt
    }
    const auto* known =
        std::ranges::find(systemReasons, file.errorString(),
                          [](const SystemReason& it) { return qt_error_string(it.error); });
    return known == std::end(systemReasons) ? file.errorString() : known->words;
}

QByteArray contentOfFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw OperationError(u"无法读取 "_s + path + u"（"_s + reasonOf(file) + u"）。"_s);
    }
    return file.readAll();
}

OperationError notWritten(const QString& path, const QString& reason) {
    // The user knows the file by its own name.
    const QString name = path.endsWith(freshEnd) ? path.chopped(freshEnd.size()) : path;
    const QString remedy =
        reason.endsWith(diskFull) ? u"请腾出空间后再做。"_s : u"请检查磁盘空间和文件夹的权限。"_s;
    return OperationError(u"无法写入 "_s + name + u"（"_s + reason + u"）。"_s + remedy);
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

void makeFolder(const QString& path) {
    std::error_code error;
    std::filesystem::create_directories(QFile::encodeName(path).toStdString(), error);
    if (error) {
        throw notWritten(path, u"不能建立文件夹，"_s + systemReason(error.value()));
    }
}

void moveFolder(const QString& from, const QString& to) {
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0) {
        throw notWritten(to, u"不能改名，"_s + systemReason(errno));
    }
}

FreshFile::FreshFile(const QString& target) : target_(target), path_(target + freshEnd) {
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
