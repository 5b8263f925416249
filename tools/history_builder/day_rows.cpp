#include "tools/history_builder/day_rows.h"

#include <algorithm>

#include "tools/history_builder/row_failure.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

void checkRow(const DayRow& row) {
    if (!row.day.isValid() || row.day.year() < 1990 || row.day.year() > 2099) {
        fail(u"日期不对"_s);
    }
    if (row.high < row.low) {
        fail(u"最高价低于最低价"_s);
    }
    if (std::max(row.open, row.close) > row.high || std::min(row.open, row.close) < row.low) {
        fail(u"开盘价或收盘价不在最低价和最高价之间"_s);
    }
}

}  // namespace guanchao
