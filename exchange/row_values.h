// The values of a row as they go into an INSERT.
#pragma once

#include <QString>

#include "store/recordset.h"

namespace guanchao {

// The fields from `first` to `last`, as texts with their commas.
QString quotedFields(const Recordset& row, int first, int last);

// The fields from `first` to the end of the row, as numbers with their commas.
QString numbersFrom(const Recordset& row, int first);

}  // namespace guanchao
