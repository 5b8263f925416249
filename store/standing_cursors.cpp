#include "store/standing_cursors.h"

#include <QByteArrayView>
#include <QHash>
#include <mutex>
#include <thread>

#include "store/sqlite.h"

namespace guanchao {

namespace {

std::mutex mutex;
QHash<sqlite3*, std::thread::id> threads;  // by connection

QByteArrayView fileOf(sqlite3* connection) {
    return sqlite3_db_filename(connection, "main");
}

bool standsOnARow(sqlite3* connection) {
    sqlite3_stmt* statement = sqlite3_next_stmt(connection, nullptr);
    while (statement && !sqlite3_stmt_busy(statement)) {
        statement = sqlite3_next_stmt(connection, statement);
    }
    return statement;
}

bool isReadHere(sqlite3* connection) {
    const QByteArrayView file = fileOf(connection);
    for (auto it = threads.cbegin(); it != threads.cend(); ++it) {
        if (it.value() == std::this_thread::get_id() && fileOf(it.key()) == file &&
            standsOnARow(it.key())) {
            return true;
        }
    }
    return false;
}

}  // namespace

void noteConnection(sqlite3* connection) {
    const std::scoped_lock lock(mutex);
    Q_ASSERT_X(!isReadHere(connection), "Connection", "a cursor of this thread stands on a row");
    threads.insert(connection, std::this_thread::get_id());
}

void forgetConnection(sqlite3* connection) {
    const std::scoped_lock lock(mutex);
    threads.remove(connection);
}

}  // namespace guanchao
