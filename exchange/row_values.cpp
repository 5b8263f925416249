#include "exchange/row_values.h"

#include <QStringList>

#include "base/values.h"

namespace guanchao {

QString quotedFields(const Recordset& row, int first, int last) {
    QStringList texts;
    for (int field = first; field <= last; ++field) {
        texts << quoted(row.value(field).toText());
    }
    return texts.join(u',');
}

QString numbersFrom(const Recordset& row, int first) {
    QStringList numbers;
    for (int field = first; field < row.fieldCount(); ++field) {
        numbers << row.value(field).toText();
    }
    return numbers.join(u',');
}

}  // namespace guanchao
