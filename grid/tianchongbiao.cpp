#include "grid/tianchongbiao.h"

#include <algorithm>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Rows are a recordset or a cursor.
template <typename Rows>
void writeHeader(const Rows& rows, ResultGrid& grid, int offset) {
    grid.setTextMatrix(0, 0, u"序号"_s);
    for (int field = 0; field < rows.fieldCount(); ++field) {
        grid.setAlignment(0, offset + field, CellAlignment::centre);
        grid.setTextMatrix(0, offset + field, rows.fieldName(field));
    }
}

template <typename Rows>
void writeRecord(const Rows& rows, ResultGrid& grid, int row, int offset) {
    grid.setInteger(row, 0, row);
    for (int field = 0; field < rows.fieldCount(); ++field) {
        const Value& value = rows.value(field);
        if (value.isReal()) {
            grid.setReal(row, offset + field, value.toNumber());
        } else if (value.isInteger()) {
            grid.setInteger(row, offset + field, value.toInteger());
        } else if (!value.isNull()) {
            grid.setTextMatrix(row, offset + field, value.toText());
        }
    }
}

// The current cell is the last one written.
void goToLastCell(ResultGrid& grid) {
    grid.setRow(grid.rows() - 1);
    grid.setCol(grid.cols() - 1);
}

}  // namespace

void tianchongbiao(Recordset& recordset, ResultGrid& grid, int offset) {
    const GridFill fill(grid);
    grid.setCols(recordset.fieldCount() + offset);
    grid.setRows(recordset.count() + 1);
    writeHeader(recordset, grid, offset);
    recordset.moveFirst();
    for (int row = 1; !recordset.atEnd(); ++row) {
        writeRecord(recordset, grid, row, offset);
        recordset.moveNext();
    }
    goToLastCell(grid);
}

GridPouring::GridPouring(RowCursor& rows, ResultGrid& grid, int offset)
    : rows_(rows), grid_(grid), offset_(offset) {}

bool GridPouring::pourRow() {
    constexpr int firstRoom = 1000;
    if (!rows_.next()) {
        return false;
    }
    if (poured_ == 0) {
        grid_.setCols(rows_.fieldCount() + offset_);
        writeHeader(rows_, grid_, offset_);
    }
    if (++poured_ == grid_.rows()) {
        grid_.setRows(std::max(2 * poured_, firstRoom));
    }
    writeRecord(rows_, grid_, poured_, offset_);
    return true;
}

void GridPouring::finish() {
    grid_.setRows(poured_ + 1);
    goToLastCell(grid_);
}

}  // namespace guanchao
