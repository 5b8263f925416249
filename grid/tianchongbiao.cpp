#include "grid/tianchongbiao.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

void writeHeader(const Recordset& recordset, ResultGrid& grid, int offset) {
    grid.setTextMatrix(0, 0, u"序号"_s);
    for (int field = 0; field < recordset.fieldCount(); ++field) {
        grid.setAlignment(0, offset + field, CellAlignment::centre);
        grid.setTextMatrix(0, offset + field, recordset.fieldName(field));
    }
}

void writeRecord(const Recordset& recordset, ResultGrid& grid, int row, int offset) {
    grid.setInteger(row, 0, row);
    for (int field = 0; field < recordset.fieldCount(); ++field) {
        const Value& value = recordset.value(field);
        if (value.isReal()) {
            grid.setReal(row, offset + field, value.toNumber());
        } else if (value.isInteger()) {
            grid.setInteger(row, offset + field, value.toInteger());
        } else if (!value.isNull()) {
            grid.setTextMatrix(row, offset + field, value.toText());
        }
    }
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
    // The current cell is the last one written.
    grid.setRow(grid.rows() - 1);
    grid.setCol(grid.cols() - 1);
}

}  // namespace guanchao
