// One INSERT for many rows of data that tools write: prepared once, the values bound as text, which
// each column turns into its own kind. The program's worded statements don't come this way.
#pragma once

#include <QString>
#include <QStringList>

#include "store/sqlite.h"

namespace guanchao {

class BoundInsert {
public:
    // `statement` holds a "?" for each value. Raises StoreError.
    BoundInsert(Connection& connection, const QString& statement);

    // One value for each "?". Raises StoreError.
    void row(const QStringList& values);

private:
    Connection& connection_;
    QString text_;
    StatementHandle statement_;
};

}  // namespace guanchao
