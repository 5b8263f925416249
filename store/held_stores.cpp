#include "store/held_stores.h"

#include <QFileInfo>
#include <QHash>

#include "base/activity.h"

namespace guanchao {

namespace {

struct Holder {
    const sqlite3* connection;
    QString activity;
};

thread_local QHash<QString, Holder> holders;

// One name for a file, by whichever path it is reached.
QString fileAt(const QString& path) {
    return QFileInfo(path).canonicalFilePath();
}

}  // namespace

void holdStore(const QString& path, const sqlite3* connection) {
    holders.insert(fileAt(path), {connection, Activity::currentName()});
}

void releaseStore(const sqlite3* connection) {
    holders.removeIf([connection](const auto& it) { return it->connection == connection; });
}

std::optional<QString> activityHolding(const QString& path, const sqlite3* connection) {
    const auto holder = holders.constFind(fileAt(path));
    if (holder == holders.cend() || holder->connection == connection) {
        return std::nullopt;
    }
    return holder->activity;
}

}  // namespace guanchao
