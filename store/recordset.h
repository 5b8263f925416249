// The whole result of a query, read at once, with a position in it.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <variant>

#include "store/connection.h"

namespace guanchao {

// A value of a result: null, integer, floating point or text, as the store gave it.
class Value {
public:
    Value() = default;
    explicit Value(qint64 integer) : value_(integer) {}
    explicit Value(double real) : value_(real) {}
    explicit Value(QString text) : value_(std::move(text)) {}

    bool isNull() const { return std::holds_alternative<std::monostate>(value_); }
    bool isInteger() const { return std::holds_alternative<qint64>(value_); }
    bool isReal() const { return std::holds_alternative<double>(value_); }

    // A number, or the leading number of a text. A null is no number: it raises OperationError.
    double toNumber() const;
    // Of an integer.
    qint64 toInteger() const { return std::get<qint64>(value_); }
    // As it stands in a concatenation; a null is empty.
    QString toText() const;

private:
    std::variant<std::monostate, qint64, double, QString> value_;
};

}  // namespace guanchao

// Lets a long result grow without moving value by value.
Q_DECLARE_TYPEINFO(guanchao::Value, Q_RELOCATABLE_TYPE);

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
bool hasTable(Connection& connection, const QString& name);

}  // namespace guanchao
