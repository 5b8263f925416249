#include "heat/heat_grid.h"

#include "base/values.h"
#include "grid/tianchongbiao.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

DayValues dayOf(const Recordset& history, const QList<CountLine>& lines) {
    DayValues day;
    day.words = history.value(u"日期").toText();
    day.day = QDate::fromString(day.words, Qt::ISODate);
    for (const CountLine& line : lines) {
        double sum = 0;
        for (const QString& field : line.fields) {
            sum += numericPrefix(history.value(field).toText());
        }
        day.values << sum;
        day.words += u"  "_s + line.words + u' ' + numberText(sum);
    }
    return day;
}

}  // namespace

void fillHeatGrid(Recordset& recordset, ResultGrid& grid, const QList<int>& widths,
                  DressRow dressRow) {
    const GridFill fill(grid);
    grid.clear();
    tianchongbiao(recordset, grid, 1);
    grid.setColWidths(widths);
    for (int row = 1; row < grid.rows(); ++row) {
        dressRow(grid, row);
    }
}

void emptyHeatGrid(ResultGrid& grid) {
    const GridFill fill(grid);
    grid.clear();
    grid.setRows(1);
    grid.setCols(1);
}

void colourColumns(ResultGrid& grid, int row, const QList<int>& cols, Colour colour) {
    for (const int col : cols) {
        grid.setCellForeColor(row, col, colour);
    }
}

void colourBySign(ResultGrid& grid, int row, const QList<int>& cols) {
    for (const int col : cols) {
        grid.setCellForeColor(row, col, signColour(grid, row, col));
    }
}

std::optional<int> findHeatRow(const ResultGrid& grid, const QString& text) {
    const QString searched = trimBlanks(text);
    for (int row = 1; row < grid.rows(); ++row) {
        const QString item = trimBlanks(grid.textMatrix(row, heatItemColumn));
        if (!item.isEmpty() && item.contains(searched)) {
            return row;
        }
    }
    return std::nullopt;
}

QList<DayValues> dayValues(Recordset& history, const QList<CountLine>& lines) {
    QList<DayValues> days;
    for (history.moveFirst(); !history.atEnd(); history.moveNext()) {
        const DayValues day = dayOf(history, lines);
        if (day.day.isValid()) {
            days.prepend(day);
        }
    }
    return days;
}

}  // namespace guanchao
