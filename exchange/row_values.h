// The values of a row as they go into an INSERT, with their commas. A null number is null.
#pragma once

#include <QString>

#include "store/recordset.h"

namespace guanchao {

// The fields from `first` to `last`, as texts.
QString quotedFields(const Recordset& row, int first, int last);

// The number of the field. Raises OperationError, which names the field, for any other text.
QString numberFrom(const Recordset& row, int field);

// The fields from `first` to the end of the row, likewise.
QString numbersFrom(const Recordset& row, int first);

// The same fields as they are: a text that stands where a number should stays a text.
QString valuesFrom(const Recordset& row, int first);

}  // namespace guanchao
