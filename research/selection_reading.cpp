#include "research/selection_reading.h"

#include <algorithm>

#include "base/activity.h"
#include "grid/tianchongbiao.h"
#include "research/refused_condition.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int shortNameColumn = 2;
constexpr int firstGainColumn = 5;
// A screen is full at once.
constexpr int firstRows = 1000;

// A gain whose divisor is zero is missing: it counts as none.
double gainOf(const Value& value) {
    return value.isNull() ? 0 : value.toNumber();
}

// The fields of the five gains.
using GainFields = std::array<int, selectionHorizons>;

GainFields gainFieldsOf(const RowCursor& rows) {
    QStringList names;
    for (int field = 0; field < rows.fieldCount(); ++field) {
        names << rows.fieldName(field);
    }
    GainFields fields = {};
    std::ranges::transform(
        QStringList{u"股涨幅"_s, u"后1涨"_s, u"后2涨"_s, u"后5涨"_s, u"后10涨"_s}, fields.begin(),
        [&](const QString& gain) { return static_cast<int>(names.indexOf(gain)); });
    return fields;
}

void setWidths(ResultGrid& grid) {
    const QList<int> widths = {500, 1200, 1100, 1200, 1200, 800, 700, 700, 700};
    grid.setColWidths(widths);
    for (int col = static_cast<int>(widths.size()); col < grid.cols(); ++col) {
        grid.setColWidth(col, 800);
    }
}

void colourRow(ResultGrid& grid, int row) {
    grid.setCellBackColor(row, selectionCodeColumn, themeColour);
    grid.setCellBackColor(row, shortNameColumn, stockColour);
    for (int col = firstGainColumn; col < grid.cols(); ++col) {
        grid.setCellBackColor(row, col, signColour(grid, row, col));
    }
}

// Of no thread, so that the one that shows may take it and let it go.
FoundTable newTable() {
    auto table = std::make_shared<ResultGrid>();
    table->moveToThread(nullptr);
    return table;
}

FoundTable firstRowsOf(const ResultGrid& table) {
    FoundTable first = newTable();
    first->copyRows(table, firstRows + 1);
    return first;
}

FoundSelection readRows(Connection& store, const QString& statement, bool mergeDates,
                        Work<FoundTable>& work) {
    FoundSelection found{newTable(), SelectionScore(mergeDates)};
    RowCursor rows(store, statement);
    const GainFields fields = gainFieldsOf(rows);
    GridPouring pouring(rows, *found.table, 1);
    while (pouring.pourRow()) {
        SelectionGains row{found.table->textMatrix(pouring.rows(), selectionDateColumn), {}};
        std::ranges::transform(fields, row.gains.begin(),
                               [&](int field) { return gainOf(rows.value(field)); });
        found.score.take(row);
        colourRow(*found.table, pouring.rows());
        if (pouring.rows() == 1) {
            setWidths(*found.table);
        } else if (pouring.rows() == firstRows) {
            work.tell(firstRowsOf(*found.table));
        }
    }
    pouring.finish();
    return found;
}

}  // namespace

FoundSelection readSelection(const StoreFile& main, const SelectionQuery& query,
                             const QString& written, Work<FoundTable>& work) {
    Activity anew({});
    if (!written.isEmpty()) {
        anew.wrote(written);
    }
    const Activity activity(u"搜索"_s,
                            u"列表和统计没有变。条件里选中的就是不对的地方，改好后再按“搜  "
                            u"索”；能用的列名在“条件”按钮的"
                            u"“插入列名”里。"_s);
    Connection store = main.open();
    store.onlyRead();
    FoundSelection found;
    try {
        store.watch([&] { found = readRows(store, query.statement(), query.mergeDates, work); },
                    [&work] { work.endIfAbandoned(); });
    } catch (const StoreError& failure) {
        if (failure.fault() != StoreFault::other) {
            throw;
        }
        throw RefusedCondition(query.condition, failure);
    }
    return found;
}

}  // namespace guanchao
