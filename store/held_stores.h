// Which stores the transactions of this program hold, in whichever thread. An operation that meets
// one of its own thread would wait in vain for that store's lock and is refused at once, by
// OperationError; one of another thread is waited for as any other program is.
#pragma once

#include <QString>
#include <optional>

struct sqlite3;

namespace guanchao {

// For a transaction: the current activity holds the store file, by this connection, until it is
// released. The file may be gone by then.
void holdStore(const QString& path, const sqlite3* connection);
void releaseStore(const sqlite3* connection);

struct StoreHolder {
    QString activity;  // "导入文章"
    bool ofThisThread = false;
};

// Who holds the store file; nothing if nobody does, or by this connection.
std::optional<StoreHolder> holderOf(const QString& path, const sqlite3* connection = nullptr);

}  // namespace guanchao
