#include "exchange/restore.h"

#include <QDir>
#include <QFileInfo>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <vector>

#include "base/activity.h"
#include "base/files.h"
#include "exchange/store_backup.h"
#include "exchange/store_check.h"
#include "exchange/store_copy.h"
#include "store/fresh_store.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Whole, but may still be given up; and under way, which is carried to its end.
const QString readyName = u"待恢复"_s;
const QString underWayName = u"恢复中"_s;

const QString restoring = u"恢复数据"_s;
const QString untouched = u"现在的数据没有改动。"_s;

QString nameOf(const StoreFile& store) {
    return QFileInfo(store.path).fileName();
}

qsizetype filesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::Files).size();
}

bool isUnusable(const StoreError& failure) {
    return failure.fault() == StoreFault::damaged || failure.fault() == StoreFault::notADatabase;
}

// One that no restore can bring back is kept as it stands: it may be what a restore is for.
void keepPresent(const StoreFile& store, const QString& target,
                 const std::function<void()>& blockDone) {
    try {
        copyStore(store, target, blockDone);
    } catch (const StoreError& failure) {
        if (!isUnusable(failure)) {
            throw;
        }
        copyFile(store.path, target);
    }
}

QList<QDateTime> changesOf(const Stores& stores, const QList<CopiedStore>& changed) {
    QList<QDateTime> changes;
    for (const CopiedStore store : changed) {
        changes << QFileInfo(fileOf(stores, store).path).lastModified();
    }
    return changes;
}

void copyPresent(const Stores& stores, const QString& folder,
                 const std::function<void()>& blockDone) {
    for (const CopiedStore it : allCopied) {
        const StoreFile& store = fileOf(stores, it);
        if (QFileInfo::exists(store.path)) {
            keepPresent(store, folder + nameOf(store), blockDone);
        }
    }
}

void requireUsable(CopiedStore store, const StoreFile& file, const CopyChoice& choice) {
    const StoreContent content = contentOf(store, file, Look::whole);
    if (!content.isReadable()) {
        const QString other = choice.elsewhere.isEmpty() ? u"一份备份"_s : u"一个文件夹"_s;
        const QString fault = wordOf(store) + content.words(store);
        throw OperationError(choice.words() + u" 的"_s + fault + u"，请另选"_s + other + u'。',
                             fault);
    }
}

// A store on a disk that can't be written to has nobody who writes to it, and can't be locked.
void copyWhole(const StoreFile& source, const QString& target,
               const std::function<void()>& blockDone) {
    if (QFileInfo(source.path).isWritable()) {
        copyStore(source, target, blockDone);
    } else {
        copyFile(source.path, target);
    }
}

void makeReady(const Stores& copied, const QList<CopiedStore>& chosen, const QString& folder,
               const std::function<void()>& blockDone) {
    for (const CopiedStore it : chosen) {
        const StoreFile& store = fileOf(copied, it);
        const QString target = folder + nameOf(store);
        copyWhole(store, target, blockDone);
        requireWhole({target, store.key});
    }
}

struct Lock {
    explicit Lock(const StoreFile& store) : connection(store.open()), transaction(connection) {}

    Connection connection;
    Transaction transaction;  // never committed, since nothing is written
};

// So that no other program is in the middle of a write to what goes. One that is unusable has no
// lock.
std::unique_ptr<Lock> lockOf(const StoreFile& store) {
    try {
        return QFileInfo::exists(store.path) ? std::make_unique<Lock>(store) : nullptr;
    } catch (const StoreError& failure) {
        if (!isUnusable(failure)) {
            throw;
        }
        return nullptr;
    }
}

bool takePlace(const StoreFile& store, const QString& folder) {
    removeJournalOf(store.path);
    return std::rename(QFile::encodeName(folder + nameOf(store)).constData(),
                       QFile::encodeName(store.path).constData()) == 0;
}

}  // namespace

QString CopyChoice::folder(const QString& copies) const {
    return elsewhere.isEmpty() ? copies + copy + u'/' : elsewhere;
}

QString CopyChoice::activity() const {
    return elsewhere.isEmpty() ? restoring : u"接管文件夹"_s;
}

QString CopyChoice::words() const {
    return elsewhere.isEmpty() ? u"备份 "_s + copy : u"文件夹 "_s + elsewhere;
}

QString CopyChoice::logged() const {
    const QString left = u"；"_s + leftBehind.join(u'、') + u"，不换"_s;
    return wordsOf(stores) + (leftBehind.isEmpty() ? QString() : left);
}

ReadyStores prepareRestore(const Stores& stores, const QString& folder, const CopyChoice& choice,
                           const QDateTime& now, ExchangeWork& work) {
    const Activity activity(choice.activity(), untouched);
    const Stores copied = storesOfCopy(stores, choice.folder(folder));
    ExchangeSteps steps(work);
    for (const CopiedStore store : choice.stores) {
        requireUsable(store, fileOf(copied, store), choice);
        steps.expect(blocksOf(fileOf(copied, store)));
    }
    for (const CopiedStore store : allCopied) {
        steps.expect(blocksOf(fileOf(stores, store)));
    }
    const auto blockDone = [&steps] { steps.stepDone(); };
    makeCopy(folder, readyName,
             [&](const QString& begun) { makeReady(copied, choice.stores, begun, blockDone); });
    const QString kept = beforeRestoreName(now);
    ReadyStores ready{folder + readyName + u'/', choice.stores, changesOf(stores, choice.stores),
                      choice.activity(), folder + kept + u'/'};
    try {
        makeCopy(folder, kept,
                 [&](const QString& begun) { copyPresent(stores, begun, blockDone); });
    } catch (...) {
        dropReady(ready);
        throw;
    }
    return ready;
}

bool isHeld(const StoreFile& store) {
    try {
        lockOf(store);
        return false;
    } catch (const StoreError& failure) {
        if (!failure.holder().isEmpty()) {
            throw;
        }
        return failure.fault() == StoreFault::busy;
    }
}

void takeTheirPlace(const Stores& stores, const ReadyStores& ready) {
    const Activity activity(ready.activity, untouched);
    std::vector<std::unique_ptr<Lock>> locks;
    for (const CopiedStore store : ready.stores) {
        locks.push_back(lockOf(fileOf(stores, store)));
    }
    if (changesOf(stores, ready.stores) != ready.replacedAsOf) {
        throw OperationError(u"数据在恢复的准备当中有改动，请再试一次。"_s);
    }
    const QString folder = QFileInfo(ready.folder.chopped(1)).path() + u'/';
    moveFolder(ready.folder.chopped(1), folder + underWayName);
    try {
        finishRestore(stores, folder);
    } catch (const OperationError& failure) {
        const bool noneHasMoved = filesIn(folder + underWayName) == ready.stores.size();
        // Renamed as a whole: what is left of it would be carried to its end at the next start.
        if (noneHasMoved && QDir().rename(folder + underWayName, ready.folder.chopped(1))) {
            dropReady(ready);
            throw;
        }
        const Activity begun(ready.activity, u"恢复已经开始，软件下次启动时会接着做完。"_s);
        throw OperationError(failure.reason());
    }
}

void finishRestore(const Stores& stores, const QString& folder) {
    const QString underWay = folder + underWayName + u'/';
    QDir(folder + readyName).removeRecursively();
    if (!QFileInfo(underWay).isDir()) {
        return;
    }
    for (const CopiedStore it : allCopied) {
        const StoreFile& store = fileOf(stores, it);
        if (QFileInfo::exists(underWay + nameOf(store)) && !takePlace(store, underWay)) {
            throw notWritten(store.path, systemReason(errno));
        }
    }
    QDir(underWay).removeRecursively();
}

void dropReady(const ReadyStores& ready) {
    QDir(ready.folder).removeRecursively();
}

}  // namespace guanchao
