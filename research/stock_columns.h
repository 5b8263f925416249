// The days of one stock in columns, read once from its table of the second history database, oldest
// day first, days that stand there twice in the order of their rows. Prices are in hundredths of a
// yuan, as stored; volumes as stored. A number that is not there is NaN. About 24 bytes a day.
#pragma once

#include <QString>
#include <unordered_map>

#include "research/day_number.h"
#include "research/number_column.h"
#include "store/connection.h"

namespace guanchao {

class StockColumns {
public:
    // Raises StoreError, also where the table is missing.
    StockColumns(Connection& secondHistory, const QString& dm);

    size_t size() const { return days_.size(); }
    DayNumber day(size_t at) const { return days_[at]; }
    // As traded: 开盘, 最高, 最低, 收盘.
    double kp(size_t at) const { return kp_[at]; }
    double zg(size_t at) const { return zg_[at]; }
    double zd(size_t at) const { return zd_[at]; }
    double sp(size_t at) const { return sp_[at]; }
    double chengjiaol(size_t at) const { return chengjiaol_[at]; }
    // Adjusted by 复权因子, the factor of the day.
    double fuquanyz(size_t at) const;
    double fuquankp(size_t at) const { return fuquanyz(at) * kp(at); }
    double fuquansp(size_t at) const { return fuquanyz(at) * sp(at); }

    // Where the first day from this one on stands, and the first one behind it.
    size_t firstFrom(DayNumber day) const;
    size_t firstBehind(DayNumber day) const;

    size_t bytes() const;

private:
    // A factor and the first of the days that it stands for.
    struct Step {
        size_t first;
        double factor;
    };

    struct Day;
    void append(const Day& day);

    std::vector<DayNumber> days_;
    NumberColumn kp_, zg_, zd_, sp_, chengjiaol_;
    std::vector<Step> factors_;  // which change once or twice a year
};

using StocksByCode = std::unordered_map<QString, StockColumns>;

}  // namespace guanchao
