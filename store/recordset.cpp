#include "store/recordset.h"

#include "base/activity.h"
#include "base/values.h"
#include "store/row_cursor.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

Recordset::Recordset(Connection& connection, const QString& statement) {
    read(connection, statement);
}

Recordset::Recordset(Connection& connection, const QString& statement,
                     const std::function<void()>& meanwhile) {
    connection.watch([&] { read(connection, statement); }, meanwhile);
}

void Recordset::read(Connection& connection, const QString& statement) {
    RowCursor rows(connection, statement);
    for (int field = 0; field < rows.fieldCount(); ++field) {
        names_ << rows.fieldName(field);
    }
    while (rows.next()) {
        for (int field = 0; field < rows.fieldCount(); ++field) {
            values_.push_back(rows.value(field));
        }
        ++count_;
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

bool hasTable(Connection& connection, const QString& name, const QString& schema) {
    const Recordset table(connection,
                          QStringLiteral("select name from ") + schema +
                              QStringLiteral(".sqlite_master where type='table' and name=") +
                              quoted(name));
    return !table.atEnd();
}

}  // namespace guanchao
