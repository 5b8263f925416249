// 填充表: the one way in which a recordset comes into a result grid.
#pragma once

#include "grid/result_grid.h"
#include "store/recordset.h"

namespace guanchao {

// Pours the recordset into the grid, its fields from column `offset` on, row numbers into column 0.
// Floating-point values show two decimals; a null leaves its cell as it was. Leaves the recordset
// behind its last record.
void tianchongbiao(Recordset& recordset, ResultGrid& grid, int offset);

}  // namespace guanchao
