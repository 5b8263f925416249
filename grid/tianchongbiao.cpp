#include "grid/tianchongbiao.h"

#include "base/values.h"

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
    grid.setTextMatrix(row, 0, QString::number(row));
    for (int field = 0; field < recordset.fieldCount(); ++field) {
        const Value& value = recordset.value(field);
        if (value.isReal()) {
            grid.setTextMatrix(row, offset + field, twoDecimals(value.toNumber()));
            grid.setAlignment(row, offset + field, CellAlignment::right);
        } else if (!value.isNull()) {
            grid.setTextMatrix(row, offset + field, value.toText());
        }
    }
}

}  // namespace

void tianchongbiao(Recordset& recordset, ResultGrid& grid, int offset) {
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
