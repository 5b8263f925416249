// A value of a result: null, integer, floating point or text, as the store gave it.
#pragma once

#include <QString>
#include <variant>

namespace guanchao {

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
