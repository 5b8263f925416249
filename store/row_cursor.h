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

    // Of the current row. A null has the number NaN and an empty text. What is given as a text
    // lasts until the next row.
    bool isNull(int field) const;
    std::string_view text(int field) const;
    QString string(int field) const;
    Value value(int field) const;
    // A text has the number at its start, as the program reads one.
    double number(int field) const;
    // As cast(x as Double) in the statement would give it.
    double castToDouble(int field) const;
    // As date(x) in the statement would give it, empty for a null.
    std::string_view date(int field);

private:
    Connection& connection_;
    QString statement_;
    StatementHandle prepared_;
    StatementHandle date_;  // for times that are not plain
};

}  // namespace guanchao
