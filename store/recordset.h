// The whole result of a query, read at once, with a position in it.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

#include "store/connection.h"
#include "store/value.h"

namespace guanchao {

class Recordset {
public:
    // Raises StoreError if the statement fails.
    Recordset(Connection& connection, const QString& statement);
    // For one that takes long, as Connection::execute.
    Recordset(Connection& connection, const QString& statement,
              const std::function<void()>& meanwhile);

    int count() const { return count_; }
    int fieldCount() const { return static_cast<int>(names_.size()); }
    const QString& fieldName(int field) const { return names_.at(field); }

    // Both are true together for an empty result.
    bool atStart() const { return count_ == 0; }
    bool atEnd() const { return row_ >= count_; }
    void moveFirst() { row_ = 0; }
    void moveNext() { ++row_; }

    // Where the field stands; -1 for an unknown name.
    int field(QStringView name) const { return static_cast<int>(names_.indexOf(name)); }
    // A field of the current record; raises OperationError past the end or for an unknown name.
    const Value& value(int field) const;
    const Value& value(QStringView name) const;

private:
    void read(Connection& connection, const QString& statement);

    QStringList names_;
    QList<Value> values_;
    int count_ = 0;
    int row_ = 0;
};

// Whether the store has a table of that name: one that is only added with its first row may be
// missing.
bool hasTable(Connection& connection, const QString& name,
              const QString& schema = QStringLiteral("main"));

// The columns of a table, but for one that only names the row by its number.
QStringList columnsOf(Connection& connection, const QString& table,
                      const QString& schema = QStringLiteral("main"));

}  // namespace guanchao
