// 恢复: takes stores of a copy back. What is there is copied first, the copy is checked, and
// brought beside the stores as a whole; only then do they change their place, in moments. Failures
// raise StoreError or OperationError and leave the stores that are there.
#pragma once

#include <QDateTime>

#include "exchange/exchange_run.h"
#include "exchange/kept_copies.h"

namespace guanchao {

// What is wanted of the copy of that name.
struct CopyChoice {
    QString copy;
    QList<CopiedStore> stores;
    // An application folder of elsewhere, with its separator, in place of a copy.
    QString elsewhere = {};
    // Of that folder, what can't be read and so doesn't come along: 文章库不能读取（已损坏）
    QStringList leftBehind = {};

    // Where it lies, of the folder of all copies.
    QString folder(const QString& copies) const;
    // 恢复数据, 接管文件夹
    QString activity() const;
    // 备份 2026-11-24, 文件夹 /media/disk/guanchaotai/
    QString words() const;
    // 主题库、采集库；文章库不能读取（已损坏），不换
    QString logged() const;
};

// Stores that are ready to take their place, and of when those are that they replace.
struct ReadyStores {
    QString folder;
    QList<CopiedStore> stores;
    QList<QDateTime> replacedAsOf;
    QString activity;
    QString kept;  // the folder of the copy that has been made of all that is there
};

// For a worker. A copy of which a chosen store can't be read is refused.
ReadyStores prepareRestore(const Stores& stores, const QString& folder, const CopyChoice& choice,
                           const QDateTime& now, ExchangeWork& work);

// For a worker: whether another program is in the middle of a write to it, which it waits for as
// long as a copy would.
bool isHeld(const StoreFile& store);

// While nothing of this program is at the stores. Refuses, by OperationError, where somebody has
// written to them since they were copied.
void takeTheirPlace(const Stores& stores, const ReadyStores& ready);

// At the start of the program, before anything reads the stores: what a killed restore has left
// halfway goes to its end.
void finishRestore(const Stores& stores, const QString& folder);

// What stands ready and isn't wanted any more.
void dropReady(const ReadyStores& ready);

}  // namespace guanchao
