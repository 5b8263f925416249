#include "heat/heat_grid.h"

#include "base/values.h"
#include "grid/tianchongbiao.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

DayValues dayOf(const Recordset& history, const QList<CountLine>& lines,
                const LowerBounds& bounds) {
    const QString date = history.value(u"日期").toText();
    const QString item = history.value(heatItemColumn - 1).toText();
    DayValues day;
    day.words = date;
    day.day = QDate::fromString(date, Qt::ISODate);
    for (const CountLine& line : lines) {
        double sum = 0;
        QString sign;
        for (const QString& field : line.fields) {
            sum += numericPrefix(history.value(field).toText());
            sign = bounds.contains({date, item, field}) ? u"≥"_s : sign;
        }
        day.values << sum;
        day.words += u"  "_s + line.words + u' ' + sign + numberText(sum);
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

void markLowerBounds(ResultGrid& grid, const LowerBounds& bounds) {
    if (bounds.isEmpty()) {
        return;
    }
    const GridFill fill(grid, GridFill::Rows::ofTheSameList);
    for (int row = 1; row < grid.rows(); ++row) {
        const QString day = grid.textMatrix(row, heatDayColumn);
        const QString item = grid.textMatrix(row, heatItemColumn);
        for (int col = heatItemColumn + 1; col < grid.cols(); ++col) {
            if (bounds.contains({day, item, grid.textMatrix(0, col)})) {
                grid.setLowerBound(row, col);
            }
        }
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

QList<DayValues> dayValues(Recordset& history, const QList<CountLine>& lines,
                           const LowerBounds& bounds) {
    QList<DayValues> days;
    for (history.moveFirst(); !history.atEnd(); history.moveNext()) {
        const DayValues day = dayOf(history, lines, bounds);
        if (day.day.isValid()) {
            days.prepend(day);
        }
    }
    return days;
}

}  // namespace guanchao
