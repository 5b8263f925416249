#include "store/row_cursor.h"

#include <limits>

#include "base/values.h"

namespace guanchao {

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
        default: {
            const std::string_view words = text(field);
            return numericPrefix(
                QString::fromUtf8(words.data(), static_cast<qsizetype>(words.size())));
        }
    }
}

std::string_view RowCursor::text(int field) const {
    const auto* words = reinterpret_cast<const char*>(sqlite3_column_text(prepared_.get(), field));
    const int size = sqlite3_column_bytes(prepared_.get(), field);
    return words ? std::string_view(words, static_cast<size_t>(size)) : std::string_view();
}

Value RowCursor::value(int field) const {
    switch (sqlite3_column_type(prepared_.get(), field)) {
        case SQLITE_NULL:
            return Value();
        case SQLITE_INTEGER:
            return Value(static_cast<qint64>(sqlite3_column_int64(prepared_.get(), field)));
        case SQLITE_FLOAT:
            return Value(sqlite3_column_double(prepared_.get(), field));
        default: {
            const std::string_view words = text(field);
            return Value(QString::fromUtf8(words.data(), static_cast<qsizetype>(words.size())));
        }
    }
}

}  // namespace guanchao
