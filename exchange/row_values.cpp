#include "exchange/row_values.h"

#include <QStringList>

#include "base/activity.h"
#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString valueFrom(const Recordset& row, int field) {
    const Value& value = row.value(field);
    if (value.isNull()) {
        return u"null"_s;
    }
    const bool isNumber = value.isInteger() || value.isReal();
    return isNumber ? value.toText() : quoted(value.toText());
}

template <typename Words>
QString joined(const Recordset& row, int first, int last, Words words) {
    QStringList values;
    for (int field = first; field <= last; ++field) {
        values << words(row, field);
    }
    return values.join(u',');
}

}  // namespace

QString quotedFields(const Recordset& row, int first, int last) {
    return joined(row, first, last,
                  [](const Recordset& it, int field) { return quoted(it.value(field).toText()); });
}

QString numberFrom(const Recordset& row, int field) {
    const Value& value = row.value(field);
    if (value.isNull() || value.isInteger() || value.isReal()) {
        return valueFrom(row, field);
    }
    const QString text = value.toText();
    if (!readsAsNumber(text)) {
        throw OperationError(row.fieldName(field) + u" 不是数字："_s + shortened(text, 20));
    }
    return numberText(numericPrefix(text));
}

QString numbersFrom(const Recordset& row, int first) {
    return joined(row, first, row.fieldCount() - 1, numberFrom);
}

QString valuesFrom(const Recordset& row, int first) {
    return joined(row, first, row.fieldCount() - 1, valueFrom);
}

}  // namespace guanchao
