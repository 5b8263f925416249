// Every statement that connections made during its life send, in their order, as the store library
// sees it: "file name: statement".
#pragma once

#include <QFileInfo>
#include <QStringList>

#include "store/sqlite.h"

namespace guanchao {

class StatementLog {
public:
    StatementLog() {
        statements() = {};
        sqlite3_auto_extension(entryPoint());
    }
    ~StatementLog() { sqlite3_cancel_auto_extension(entryPoint()); }
    StatementLog(const StatementLog&) = delete;
    StatementLog& operator=(const StatementLog&) = delete;

    static QStringList& statements() {
        static QStringList statements;
        return statements;
    }

private:
    static int watch(sqlite3* handle, char**, const void*) {
        sqlite3_trace(handle, note, handle);
        return SQLITE_OK;
    }
    // The library takes any entry point as a function without arguments.
    static void (*entryPoint())() { return reinterpret_cast<void (*)()>(watch); }

    static void note(void* handle, const char* statement) {
        const QString path =
            QString::fromUtf8(sqlite3_db_filename(static_cast<sqlite3*>(handle), "main"));
        statements() << QFileInfo(path).fileName() + QStringLiteral(": ") +
                            QString::fromUtf8(statement);
    }
};

}  // namespace guanchao
