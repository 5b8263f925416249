#include "heat/heat_map.h"

#include <algorithm>
#include <cmath>

#include "grid/heat_colour.h"
#include "grid/table_columns.h"
#include "heat/collector_contract.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int numberWidth = 500;
constexpr int itemWidth = 1800;
constexpr int nameWidth = 1100;
constexpr int dayWidth = 640;

// Items whose newest day was not collected stand behind all others.
QList<ItemDays> sorted(QList<ItemDays> items) {
    std::ranges::stable_sort(items, std::ranges::greater(), [](const ItemDays& it) {
        const double newest = it.figures.last().value;
        return std::isnan(newest) ? -HUGE_VAL : newest;
    });
    return items;
}

double furthestFromZero(const ItemDays& item) {
    double furthest = 0;
    for (const DayFigure& it : item.figures) {
        furthest = std::fmax(furthest, std::abs(it.value));
    }
    return furthest;
}

void putFigure(ResultGrid& grid, int row, int col, const DayFigure& figure) {
    const double whole = std::round(figure.value);
    if (figure.value == whole) {
        grid.setInteger(row, col, static_cast<qint64>(whole));
    } else {
        grid.setReal(row, col, figure.value);
    }
    if (figure.isLowerBound) {
        grid.setLowerBound(row, col);
    }
}

class MapTable {
public:
    MapTable(const HeatDays& days, const HeatSubject& subject, const DayField& field,
             ResultGrid& grid)
        : days_(days),
          field_(field),
          grid_(grid),
          hasNames_(!subject.name.isEmpty()),
          firstDay_(mapItemColumn + (hasNames_ ? 2 : 1)) {
        QList<TableColumn> columns;
        if (hasNames_) {
            columns << TableColumn{u"代码"_s, nameWidth} << TableColumn{u"简称"_s, nameWidth};
        } else {
            columns << TableColumn{subject.kind + u"名称"_s, itemWidth};
        }
        for (qsizetype day = days.days.size(); day-- > 0;) {
            columns << TableColumn{days.days[day].toString(u"MM-dd"), dayWidth};
        }
        beginTable(grid_, columns, days.items.size(), numberWidth);
    }

    void putItem(int row, const ItemDays& item) {
        grid_.setTextMatrix(row, mapItemColumn, item.item);
        grid_.setCellForeColor(row, mapItemColumn, stockColour);
        if (hasNames_) {
            grid_.setTextMatrix(row, mapItemColumn + 1, item.name);
        }
        const double full = field_.isGrowth ? fullGrowth : furthestFromZero(item);
        for (qsizetype day = 0; day < days_.days.size(); ++day) {
            putDay(row, columnOf(day), item.figures[day], full);
        }
    }

private:
    int columnOf(qsizetype day) const {
        return firstDay_ + static_cast<int>(days_.days.size() - 1 - day);
    }

    void putDay(int row, int col, const DayFigure& figure, double full) {
        if (std::isnan(figure.value)) {
            return;
        }
        if (field_.isGrowth && figure.value == noGrowth) {
            grid_.setTextMatrix(row, col, noGrowthWord);
            grid_.setAlignment(row, col, CellAlignment::right);
            return;
        }
        putFigure(grid_, row, col, figure);
        setHeat(grid_, row, col, figure.value, full);
    }

    const HeatDays& days_;
    const DayField& field_;
    ResultGrid& grid_;
    bool hasNames_;
    int firstDay_;
};

}  // namespace

void fillHeatMap(const HeatDays& days, const HeatSubject& subject, const DayField& field,
                 ResultGrid& grid) {
    const GridFill fill(grid);
    MapTable table(days, subject, field, grid);
    int row = 0;
    for (const ItemDays& it : sorted(days.items)) {
        table.putItem(++row, it);
    }
}

}  // namespace guanchao
