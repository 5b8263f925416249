// Which stores the transactions of this program hold. All its operations share one thread: one that
// events bring about in the middle of a transaction would wait in vain for that store's lock, so it
// is refused at once, by OperationError.
#pragma once

#include <QString>
#include <optional>

struct sqlite3;

namespace guanchao {

// For a transaction: the current activity holds the store file, by this connection, until it is
// released. The file may be gone by then.
void holdStore(const QString& path, const sqlite3* connection);
void releaseStore(const sqlite3* connection);

// The activity that holds the store file ("导入文章"); nothing if none does, or by this connection.
std::optional<QString> activityHolding(const QString& path, const sqlite3* connection = nullptr);

}  // namespace guanchao
