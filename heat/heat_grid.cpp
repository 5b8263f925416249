#include "heat/heat_grid.h"

#include <limits>

#include <algorithm>

#include "base/values.h"
#include "grid/colours.h"
#include "grid/tianchongbiao.h"
#include "heat/collector_contract.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The columns of a count in the lists, and what a note tells of it: a total of words is never a
// lower bound.
struct NotedCount {
    QString count;
    QString growth;
    bool NewsNote::*isLowerBound;
};

const NotedCount notedCounts[] = {{u"一日数量"_s, u"一日涨幅"_s, &NewsNote::onexian},
                                  {u"全部数量"_s, u"全部涨幅"_s, &NewsNote::allxian},
                                  {u"自定义数量"_s, u"自定义涨幅"_s, &NewsNote::zdyxian},
                                  {u"总分"_s, u"增长"_s, nullptr}};

bool isLowerBound(const QString& field, const NewsNote& note) {
    return std::ranges::any_of(notedCounts, [&](const NotedCount& it) {
        return it.count == field && it.isLowerBound && note.*it.isLowerBound;
    });
}

DayValues dayOf(const Recordset& history, const QList<CountLine>& lines, const NewsNotes& notes) {
    const QString date = history.value(u"日期").toText();
    const NewsNote note = notes.value({date, history.value(heatItemColumn - 1).toText()});
    DayValues day;
    day.words = date;
    day.day = QDate::fromString(date, Qt::ISODate);
    day.source = note.laiyuan;
    for (const CountLine& line : lines) {
        if (line.isCustom && numericPrefix(history.value(u"自定义天数").toText()) == 0) {
            day.values << std::numeric_limits<double>::quiet_NaN();
            continue;
        }
        double sum = 0;
        QString sign;
        for (const QString& field : line.fields) {
            sum += numericPrefix(history.value(field).toText());
            sign = isLowerBound(field, note) ? u"≥"_s : sign;
        }
        day.values << sum;
        day.words += u"  "_s + line.words + u' ' + sign + numberText(sum);
    }
    return day;
}

void showGrowthWithoutBase(ResultGrid& grid, int row, int col) {
    if (grid.number(row, col) == noGrowth || grid.textMatrix(row, col) == noGrowthWord) {
        grid.setTextMatrix(row, col, noGrowthWord);
        grid.setCellForeColor(row, col, textColour);
    }
}

void showNote(ResultGrid& grid, int row, const NewsNote& note) {
    for (int col = heatItemColumn + 1; col < grid.cols(); ++col) {
        const QString title = grid.textMatrix(0, col);
        for (const NotedCount& it : notedCounts) {
            if (title == it.growth) {
                showGrowthWithoutBase(grid, row, col);
            }
        }
        if (isLowerBound(title, note)) {
            grid.setLowerBound(row, col);
        }
    }
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

void showNotes(ResultGrid& grid, const NewsNotes& notes) {
    if (notes.isEmpty()) {
        return;
    }
    const GridFill fill(grid, GridFill::Rows::ofTheSameList);
    for (int row = 1; row < grid.rows(); ++row) {
        const auto note =
            notes.find({grid.textMatrix(row, heatDayColumn), grid.textMatrix(row, heatItemColumn)});
        if (note != notes.end()) {
            showNote(grid, row, *note);
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
                           const NewsNotes& notes) {
    QList<DayValues> days;
    for (history.moveFirst(); !history.atEnd(); history.moveNext()) {
        const DayValues day = dayOf(history, lines, notes);
        if (day.day.isValid()) {
            days.prepend(day);
        }
    }
    return days;
}

}  // namespace guanchao
