#include "research/stock_columns.h"

#include <algorithm>
#include <cmath>

#include "base/values.h"
#include "store/row_cursor.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

bool isSame(double left, double right) {
    return left == right || (std::isnan(left) && std::isnan(right));
}

}  // namespace

struct StockColumns::Day {
    DayNumber day;
    double kp, zg, zd, sp, chengjiaol, factor;
};

StockColumns::StockColumns(Connection& secondHistory, const QString& dm) {
    std::vector<Day> days;
    RowCursor row(secondHistory, u"select shijian,kp,zg,zd,sp,chengjiaol,fuquanyz from "_s +
                                     quotedName(dm) + u" order by rowid"_s);
    while (row.next()) {
        const std::string_view day = row.date(0);
        if (!day.empty()) {
            days.push_back({dayNumber(day), row.castToDouble(1), row.castToDouble(2),
                            row.castToDouble(3), row.castToDouble(4), row.number(5),
                            row.castToDouble(6)});
        }
    }
    if (!std::ranges::is_sorted(days, {}, &Day::day)) {
        std::ranges::stable_sort(days, {}, &Day::day);
    }
    days_.reserve(days.size());
    for (NumberColumn* column : {&kp_, &zg_, &zd_, &sp_, &chengjiaol_}) {
        column->reserve(days.size());
    }
    for (const Day& day : days) {
        append(day);
    }
}

void StockColumns::append(const Day& day) {
    if (factors_.empty() || !isSame(factors_.back().factor, day.factor)) {
        factors_.push_back({days_.size(), day.factor});
    }
    days_.push_back(day.day);
    kp_.append(day.kp);
    zg_.append(day.zg);
    zd_.append(day.zd);
    sp_.append(day.sp);
    chengjiaol_.append(day.chengjiaol);
}

double StockColumns::fuquanyz(size_t at) const {
    const auto behind = std::ranges::upper_bound(factors_, at, {}, &Step::first);
    return std::prev(behind)->factor;
}

size_t StockColumns::firstFrom(DayNumber day) const {
    return static_cast<size_t>(std::ranges::lower_bound(days_, day) - days_.begin());
}

size_t StockColumns::firstBehind(DayNumber day) const {
    return static_cast<size_t>(std::ranges::upper_bound(days_, day) - days_.begin());
}

size_t StockColumns::bytes() const {
    size_t sum = days_.capacity() * sizeof(DayNumber) + factors_.capacity() * sizeof(Step);
    for (const NumberColumn* column : {&kp_, &zg_, &zd_, &sp_, &chengjiaol_}) {
        sum += column->bytes();
    }
    return sum;
}

}  // namespace guanchao
