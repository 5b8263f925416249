// 填充表: the one way in which the rows of a query come into a result grid.
#pragma once

#include "grid/result_grid.h"
#include "store/recordset.h"
#include "store/row_cursor.h"

namespace guanchao {

// Pours the recordset into the grid, its fields from column `offset` on, row numbers into column 0.
// Floating-point values show two decimals; a null leaves its cell as it was. Leaves the recordset
// behind its last record.
void tianchongbiao(Recordset& recordset, ResultGrid& grid, int offset);

// The same from rows as the store finds them, for a result that is too long to be held twice: into
// a new grid that no view shows, which a worker may make.
class GridPouring {
public:
    GridPouring(RowCursor& rows, ResultGrid& grid, int offset);

    // Pours the next row; false if there is none. The grid has room for more rows than it holds.
    bool pourRow();
    int rows() const { return poured_; }
    // Gives back the room that no row has taken; without rows the grid is an empty one.
    void finish();

private:
    RowCursor& rows_;
    ResultGrid& grid_;
    GridFill fill_{grid_};
    int offset_;
    int poured_ = 0;
};

}  // namespace guanchao
