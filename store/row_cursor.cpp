#include "store/row_cursor.h"

#include <limits>

#include "base/values.h"
#include "store/dialect.h"

namespace guanchao {

namespace {

std::string_view textOf(sqlite3_stmt* statement, int field) {
    const auto* words = reinterpret_cast<const char*>(sqlite3_column_text(statement, field));
    const int size = sqlite3_column_bytes(statement, field);
    return words ? std::string_view(words, static_cast<size_t>(size)) : std::string_view();
}

}  // namespace

RowCursor::RowCursor(Connection& connection, const QString& statement)
    : connection_(connection), statement_(statement), prepared_(prepare(connection, statement)) {}

int RowCursor::fieldCount() const {
    return sqlite3_column_count(prepared_.get());
}

QString RowCursor::fieldName(int field) const {
    return QString::fromUtf8(sqlite3_column_name(prepared_.get(), field));
}

bool RowCursor::next() {
    const int step = sqlite3_step(prepared_.get());
    if (step != SQLITE_ROW && step != SQLITE_DONE) {
        raiseLastFailure(connection_, statement_);
    }
    return step == SQLITE_ROW;
}

bool RowCursor::isNull(int field) const {
    return sqlite3_column_type(prepared_.get(), field) == SQLITE_NULL;
}

double RowCursor::number(int field) const {
    switch (sqlite3_column_type(prepared_.get(), field)) {
        case SQLITE_NULL:
            return std::numeric_limits<double>::quiet_NaN();
        case SQLITE_INTEGER:
        case SQLITE_FLOAT:
            return sqlite3_column_double(prepared_.get(), field);
        default:
            return numericPrefix(string(field));
    }
}

double RowCursor::castToDouble(int field) const {
    // A null reads as 0, too: its kind, which takes as long as the number, is asked for then only.
    const double number = sqlite3_column_double(prepared_.get(), field);
    return number == 0 && isNull(field) ? std::numeric_limits<double>::quiet_NaN() : number;
}

std::string_view RowCursor::text(int field) const {
    return textOf(prepared_.get(), field);
}

std::string_view RowCursor::date(int field) {
    if (sqlite3_column_type(prepared_.get(), field) == SQLITE_TEXT) {
        const std::string_view day = dayOfPlainTime(text(field));
        if (!day.empty()) {
            return day;
        }
    }
    if (!date_) {
        date_ = prepare(connection_, QStringLiteral("select date(?)"));
    }
    sqlite3_reset(date_.get());
    sqlite3_bind_value(date_.get(), 1, sqlite3_column_value(prepared_.get(), field));
    if (sqlite3_step(date_.get()) != SQLITE_ROW) {
        raiseLastFailure(connection_, statement_);
    }
    return textOf(date_.get(), 0);
}

QString RowCursor::string(int field) const {
    const std::string_view words = text(field);
    return QString::fromUtf8(words.data(), static_cast<qsizetype>(words.size()));
}

Value RowCursor::value(int field) const {
    switch (sqlite3_column_type(prepared_.get(), field)) {
        case SQLITE_NULL:
            return Value();
        case SQLITE_INTEGER:
            return Value(static_cast<qint64>(sqlite3_column_int64(prepared_.get(), field)));
        case SQLITE_FLOAT:
            return Value(sqlite3_column_double(prepared_.get(), field));
        default:
            return Value(string(field));
    }
}

}  // namespace guanchao
