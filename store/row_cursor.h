// The rows of a query one after the other, none of them held: for results that are too many to be a
// Recordset. Raises StoreError.
#pragma once

#include <QString>
#include <string_view>

#include "store/sqlite.h"
#include "store/value.h"

namespace guanchao {

class RowCursor {
public:
    RowCursor(Connection& connection, const QString& statement);

    int fieldCount() const;
    QString fieldName(int field) const;

    // False behind the last row.
    bool next();

    // Of the current row. A null has the number NaN and an empty text; a text has the number at its
    // start. The text lasts until the next row.
    bool isNull(int field) const;
    double number(int field) const;
    std::string_view text(int field) const;
    Value value(int field) const;

private:
    Connection& connection_;
    QString statement_;
    StatementHandle prepared_;
};

}  // namespace guanchao
