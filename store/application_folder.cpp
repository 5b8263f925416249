#include "store/application_folder.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QLockFile>
#include <QStandardPaths>

#include "base/activity.h"
#include "base/files.h"
#include "store/fresh_store.h"
#include "store/stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

bool holdsStores(const QString& folder) {
    return QFileInfo::exists(storesIn(folder).main.path);
}

// The stores and the choice of services are the user's once they are there.
bool belongsToUser(const QString& fileName) {
    return fileName.endsWith(u".mzdat"_s) || fileName == u"services.ini"_s;
}

// A program that runs, or a store that is opened, sees the old file or the whole new one.
void copyFile(const QString& source, const QString& target) {
    const QByteArray content = contentOfFile(source);
    if (QFileInfo::exists(target) && contentOfFile(target) == content) {
        return;
    }
    removeJournalOf(target);
    replaceFile(target, content);
}

}  // namespace

ApplicationFolder::ApplicationFolder(const QString& programFolder, const QString& userData)
    : programFolder_(applicationFolder(programFolder)), path_(programFolder_) {
    const QString files = QDir::cleanPath(programFolder_ + u"../../share/guanchaotai"_s) + u'/';
    if (!holdsStores(programFolder_) && holdsStores(files)) {
        installedFiles_ = files;
        path_ = applicationFolder(userData) + u"guanchaotai/"_s;
    }
}

void ApplicationFolder::prepare() const {
    if (installedFiles_.isEmpty()) {
        return;
    }
    const Activity activity(u"准备应用目录"_s, u"已有的数据没有改动。"_s);
    makeFolder(path_);
    // Two programs that start at once must not both make a store.
    QLockFile lock(path_ + u"prepare.lock"_s);
    if (!lock.lock()) {
        throw notWritten(path_, u"不能建立文件"_s);
    }
    copyFiles();
    linkPrograms();
}

void ApplicationFolder::copyFiles() const {
    QDirIterator files(installedFiles_, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QFileInfo source = files.nextFileInfo();
        const QString target = path_ + source.filePath().mid(installedFiles_.size());
        if (source.isDir()) {
            makeFolder(target);
        } else if (!belongsToUser(source.fileName()) || !QFileInfo::exists(target)) {
            copyFile(source.filePath(), target);
        }
    }
}

// The collector and the browser library are reached by the application folder, and shortcuts name
// the program in it.
void ApplicationFolder::linkPrograms() const {
    for (const QFileInfo& program : QDir(programFolder_).entryInfoList(QDir::Files)) {
        const QString link = path_ + program.fileName();
        if (QFile::symLinkTarget(link) == program.filePath()) {
            continue;
        }
        QFile::remove(link);
        if (!QFile::link(program.filePath(), link)) {
            throw notWritten(link, u"不能建立链接"_s);
        }
    }
}

QString preparedApplicationFolder() {
    const ApplicationFolder folder(
        QCoreApplication::applicationDirPath(),
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    folder.prepare();
    return folder.path();
}

}  // namespace guanchao
