// The limit of everything that works on a store: the library called in a loop, nothing around it.
#pragma once

#include <benchmark/benchmark.h>

#include <QString>

#include "store/dialect.h"
#include "store/sqlite.h"

namespace guanchao {

// Runs the statement and reads every value of its result as text.
inline void runBare(sqlite3* handle, const QString& statement) {
    sqlite3_stmt* prepared = nullptr;
    sqlite3_prepare_v2(handle, statement.toUtf8().constData(), -1, &prepared, nullptr);
    const int columns = sqlite3_column_count(prepared);
    while (sqlite3_step(prepared) == SQLITE_ROW) {
        for (int column = 0; column < columns; ++column) {
            benchmark::DoNotOptimize(sqlite3_column_text(prepared, column));
        }
    }
    sqlite3_finalize(prepared);
}

class BareStore {
public:
    explicit BareStore(const QString& path) {
        sqlite3_open_v2(path.toUtf8().constData(), &handle_,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
        sqlite3_busy_timeout(handle_, 5000);
        registerDialect(handle_);
    }
    ~BareStore() { sqlite3_close(handle_); }
    BareStore(const BareStore&) = delete;
    BareStore& operator=(const BareStore&) = delete;

    void run(const QString& statement) { runBare(handle_, statement); }

private:
    sqlite3* handle_ = nullptr;
};

}  // namespace guanchao
