// The copies of the stores in the folder 备份 of the application folder, each a folder of its own
// that holds the store files under their names. Which are there, and which are too many.
#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <cstdint>

#include "store/stores.h"

namespace guanchao {

inline constexpr int daysKept = 7;
inline constexpr int weeksKept = 8;
inline constexpr int beforeRestoresKept = 3;
// Of all copies together.
inline constexpr qint64 mostCopyBytes = qint64(2) << 30;

struct KeptCopy {
    QString name;  // of its folder
    QDate day;
    bool beforeRestore = false;  // made by a restore, of what it was about to replace
    qint64 bytes = 0;
};

// 备份/ of the application folder.
QString copiesFolder(const QString& applicationFolder);

// 2026-11-25, and 2026-11-25 10.30.05 恢复前.
QString dailyCopyName(const QDate& day);
QString beforeRestoreName(const QDateTime& now);

// The stores that the program writes to, and so are copied.
enum class CopiedStore : std::uint8_t { main, article, heat };
inline const QList<CopiedStore> allCopied = {CopiedStore::main, CopiedStore::article,
                                             CopiedStore::heat};

// 主题库
QString wordOf(CopiedStore store);
// 主题库、文章库
QString wordsOf(const QList<CopiedStore>& stores);
const StoreFile& fileOf(const Stores& stores, CopiedStore store);

// The same in a folder of copies.
Stores storesOfCopy(const Stores& stores, const QString& folder);

// The whole copies, the newest first.
QList<KeptCopy> keptCopies(const QString& folder);

// Of the copies, the newest first: those beyond the days, the weeks (the newest of each) and the
// bytes, the oldest of these first. The newest daily one is never among them.
QList<KeptCopy> copiesToGo(const QList<KeptCopy>& copies, qint64 mostBytes = mostCopyBytes);

}  // namespace guanchao
