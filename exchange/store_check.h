// Whether the stores that are copied are whole, and how much is in them.
#pragma once

#include <QList>
#include <QMap>
#include <QString>

#include "exchange/kept_copies.h"

namespace guanchao {

// One of the numbers by which a user knows a store.
struct StoreCount {
    QString title;  // 主题
    QString words;  // %1 个主题
    QString query;
};
const QList<StoreCount>& countsOf(CopiedStore store);

// Both raise StoreError if the store can't be opened by its key; the first also if it is damaged
// anywhere, or has no bytes.
void requireWhole(const StoreFile& file);
QList<qint64> readCounts(CopiedStore store, const StoreFile& file);

struct StoreContent {
    QString fault;         // why it can't be read: 已损坏; empty if it can
    QList<qint64> counts;  // in the order of countsOf
    QStringList others;    // 自选股 7 只: of all else that the user has in it

    bool isReadable() const { return fault.isEmpty(); }
    // 600 个主题，40000 条，5400 只股票，3 个监控，自选股 7 只; 不能读取（已损坏）
    QString words(CopiedStore store) const;
};

// The quick look reads the numbers alone.
enum class Look : std::uint8_t { quick, whole };
StoreContent contentOf(CopiedStore store, const StoreFile& file, Look look);

using StoreContents = QMap<CopiedStore, StoreContent>;
StoreContents contentsOf(const QList<CopiedStore>& wanted, const Stores& stores, Look look);

}  // namespace guanchao
