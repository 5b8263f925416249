// The one failure that a store raises.
#pragma once

#include <QString>

#include "base/activity.h"

namespace guanchao {

// What a user can do something about.
enum class StoreFault {
    other,
    busy,
    notADatabase,
    full,
    readOnly,
    unreadable,
    damaged,
    condition,  // the words that the user typed into a statement
};

// A failed opening or statement: `reason` is the store's own message, which each version of the
// library words in its own way; only `fault` tells what it means.
class StoreError : public OperationError {
public:
    StoreError(const QString& reason, const QString& path, const QString& statement,
               StoreFault fault = StoreFault::other, const QString& holder = {});

    const QString& path() const { return path_; }
    const QString& statement() const { return statement_; }
    StoreFault fault() const { return fault_; }
    // The activity of this program for which a busy store is held; empty if another program does.
    const QString& holder() const { return holder_; }

private:
    QString path_;
    QString statement_;
    StoreFault fault_;
    QString holder_;
};

}  // namespace guanchao
