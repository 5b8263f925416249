// The store library with its key calls, and the few helpers that every use of it needs.
#pragma once

#ifndef SQLITE_HAS_CODEC
#define SQLITE_HAS_CODEC 1
#endif
#include <sqlcipher/sqlite3.h>

#include <QString>
#include <memory>

#include "store/connection.h"

namespace guanchao {

struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StatementHandle = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

// Prepares the one statement of the text; raises StoreError if it is wrong or if more follows it.
StatementHandle prepare(const Connection& connection, const QString& statement);

// Raises the connection's last failure as StoreError.
[[noreturn]] void raiseLastFailure(const Connection& connection, const QString& statement);

}  // namespace guanchao
