#include "store/held_stores.h"

#include <QFileInfo>
#include <QHash>
#include <mutex>
#include <thread>

#include "base/activity.h"

namespace guanchao {

namespace {

struct Holder {
    const sqlite3* connection;
    QString activity;
    std::thread::id thread;
};

std::mutex mutex;
QHash<QString, Holder> holders;

// One name for a file, by whichever path it is reached.
QString fileAt(const QString& path) {
    return QFileInfo(path).canonicalFilePath();
}

}  // namespace

void holdStore(const QString& path, const sqlite3* connection) {
    const QString file = fileAt(path);
    const std::scoped_lock lock(mutex);
    holders.insert(file, {connection, Activity::currentName(), std::this_thread::get_id()});
}

void releaseStore(const sqlite3* connection) {
    const std::scoped_lock lock(mutex);
    holders.removeIf([connection](const auto& it) { return it->connection == connection; });
}

std::optional<StoreHolder> holderOf(const QString& path, const sqlite3* connection) {
    const QString file = fileAt(path);
    const std::scoped_lock lock(mutex);
    const auto holder = holders.constFind(file);
    if (holder == holders.cend() || holder->connection == connection) {
        return std::nullopt;
    }
    return StoreHolder{holder->activity, holder->thread == std::this_thread::get_id()};
}

}  // namespace guanchao
