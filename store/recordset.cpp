#include "store/recordset.h"

#include "base/activity.h"
#include "base/values.h"
#include "store/sqlite.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

Value columnValue(sqlite3_stmt* statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
        case SQLITE_NULL:
            return Value();
        case SQLITE_INTEGER:
            return Value(static_cast<qint64>(sqlite3_column_int64(statement, column)));
        case SQLITE_FLOAT:
            return Value(sqlite3_column_double(statement, column));
        default: {
            const auto* text =
                reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
            return Value(QString::fromUtf8(text, sqlite3_column_bytes(statement, column)));
        }
    }
}

}  // namespace

double Value::toNumber() const {
    if (isNull()) {
        throw OperationError(u"缺少一个数值（空值）"_s);
    }
    if (const auto* integer = std::get_if<qint64>(&value_)) {
        return static_cast<double>(*integer);
    }
    if (const auto* real = std::get_if<double>(&value_)) {
        return *real;
    }
    return numericPrefix(std::get<QString>(value_));
}

QString Value::toText() const {
    if (const auto* text = std::get_if<QString>(&value_)) {
        return *text;
    }
    if (const auto* integer = std::get_if<qint64>(&value_)) {
        return QString::number(*integer);
    }
    return isReal() ? numberText(std::get<double>(value_)) : QString();
}

Recordset::Recordset(Connection& connection, const QString& statement) {
    read(connection, statement);
}

Recordset::Recordset(Connection& connection, const QString& statement,
                     const std::function<void()>& meanwhile) {
    connection.watch([&] { read(connection, statement); }, meanwhile);
}

void Recordset::read(Connection& connection, const QString& statement) {
    const StatementHandle prepared = prepare(connection, statement);
    const int columns = sqlite3_column_count(prepared.get());
    for (int column = 0; column < columns; ++column) {
        names_ << QString::fromUtf8(sqlite3_column_name(prepared.get(), column));
    }
    int step = sqlite3_step(prepared.get());
    for (; step == SQLITE_ROW; step = sqlite3_step(prepared.get())) {
        for (int column = 0; column < columns; ++column) {
            values_.push_back(columnValue(prepared.get(), column));
        }
        ++count_;
    }
    if (step != SQLITE_DONE) {
        raiseLastFailure(connection, statement);
    }
}

const Value& Recordset::value(int field) const {
    if (atEnd() || field < 0 || field >= fieldCount()) {
        throw OperationError(u"没有当前记录，或者没有这个字段"_s);
    }
    return values_[row_ * names_.size() + field];
}

const Value& Recordset::value(QStringView name) const {
    return value(field(name));
}

bool hasTable(Connection& connection, const QString& name) {
    const Recordset table(
        connection, QStringLiteral("select name from sqlite_master where type='table' and name=") +
                        quoted(name));
    return !table.atEnd();
}

}  // namespace guanchao
