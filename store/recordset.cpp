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

QStringList columnsOf(Connection& connection, const QString& table, const QString& schema) {
    QStringList names;
    for (Recordset column(connection, u"pragma "_s + schema + u".table_info("_s + table + u')');
         !column.atEnd(); column.moveNext()) {
        const bool isKey = column.value(u"pk").toInteger() > 0;
        const bool namesRow =
            isKey && column.value(u"type").toText().compare(u"integer", Qt::CaseInsensitive) == 0;
        if (!namesRow) {
            names << column.value(u"name").toText();
        }
    }
    return names;
}

}  // namespace guanchao
