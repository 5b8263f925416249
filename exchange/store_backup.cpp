#include "exchange/store_backup.h"

#include <QDir>
#include <QFileInfo>
#include <filesystem>
#include <limits>

#include "base/activity.h"
#include "base/files.h"
#include "base/run_note.h"
#include "exchange/store_check.h"
#include "exchange/store_copy.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString unfinished = u".new"_s;

// What killed runs have left.
void removeUnfinished(const QString& folder) {
    for (const QString& name : QDir(folder).entryList({u'*' + unfinished}, QDir::Dirs)) {
        QDir(folder + name).removeRecursively();
    }
}

void requireRoom(const Stores& stores, qint64 freeBytes) {
    qint64 needed = spareBytes;
    for (const CopiedStore store : allCopied) {
        needed += QFileInfo(fileOf(stores, store).path).size();
    }
    if (freeBytes < needed) {
        const QString reason =
            u"磁盘空间不够：需要 %1 MB，只有 %2 MB。"_s.arg(needed >> 20).arg(freeBytes >> 20);
        throw OperationError(reason, reason);
    }
}

void copyAll(const Stores& stores, const QString& folder, const std::function<void()>& blockDone) {
    const Stores copied = storesOfCopy(stores, folder);
    for (const CopiedStore store : allCopied) {
        const StoreFile& copy = fileOf(copied, store);
        copyStore(fileOf(stores, store), copy.path, blockDone);
        requireWhole(copy);
        readCounts(store, copy);
    }
}

}  // namespace

// Asked of the file system itself: that of a container may stand in no table of mounts.
qint64 freeBytesOn(const QString& folder) {
    std::error_code untold;
    const auto space = std::filesystem::space(QFile::encodeName(folder).toStdString(), untold);
    return untold ? std::numeric_limits<qint64>::max() : static_cast<qint64>(space.available);
}

void makeCopy(const QString& folder, const QString& name, const FillCopy& fill) {
    const QString begun = folder + name + unfinished;
    QDir(begun).removeRecursively();
    makeFolder(begun);
    try {
        fill(begun + u'/');
        QDir(folder + name).removeRecursively();
        moveFolder(begun, folder + name);
    } catch (...) {
        QDir(begun).removeRecursively();
        throw;
    }
}

bool makeDailyCopy(const Stores& stores, const QString& folder, const QDate& day,
                   const FreeBytes& freeBytes, const std::function<void()>& blockDone) {
    const Activity activity(u"每日备份"_s, u"以前的备份没有改动。"_s);
    const QString name = dailyCopyName(day);
    if (QFileInfo(folder + name).isDir()) {
        return false;
    }
    RunNote note(u"每日备份"_s, {});
    makeFolder(folder);
    removeUnfinished(folder);
    requireRoom(stores, freeBytes(folder));
    makeCopy(folder, name, [&](const QString& begun) { copyAll(stores, begun, blockDone); });
    for (const KeptCopy& copy : copiesToGo(keptCopies(folder))) {
        QDir(folder + copy.name).removeRecursively();
    }
    note.ended();
    return true;
}

}  // namespace guanchao
