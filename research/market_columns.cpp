#include "research/market_columns.h"

#include "store/recordset.h"
#include "store/row_cursor.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr size_t rowsBetweenCalls = 4096;

const QString rowsOfTheMarket =
    u"select dm,date(shijian),(cast(sp as Double)/cast(qiansp as Double)-1)*100,zg=sp,zg=zd from"
    u" geguhq order by rowid"_s;

int lastRow(Connection& history) {
    const Recordset last(history, u"select ifnull(max(rowid),0) from geguhq"_s);
    return static_cast<int>(last.value(0).toInteger());
}

// The number of the code that the row before had is known without a look.
class StockOfRow {
public:
    explicit StockOfRow(Memberships& memberships) : memberships_(memberships) {}

    std::int32_t operator()(std::string_view dm) {
        if (dm != dm_) {
            dm_ = dm;
            stock_ = memberships_.stockOf(dm);
        }
        return stock_;
    }

private:
    Memberships& memberships_;
    std::string dm_;
    std::int32_t stock_ = memberships_.stockOf({});
};

std::uint8_t closeOf(const RowCursor& row) {
    const bool atHigh = row.number(3) == 1;
    const bool atOnePrice = row.number(4) == 1;
    return static_cast<std::uint8_t>((atHigh ? MarketDay::atHigh : 0) |
                                     (atOnePrice ? MarketDay::atOnePrice : 0));
}

}  // namespace

MarketColumns::MarketColumns(Connection& firstHistory, const Meanwhile& meanwhile)
    : memberships_(firstHistory) {
    const int total = lastRow(firstHistory);
    StockOfRow stockOf(memberships_);
    DayNumber number = -1;
    MarketDay* day = nullptr;
    RowCursor row(firstHistory, rowsOfTheMarket);
    for (size_t read = 0; row.next(); ++read) {
        if (read % rowsBetweenCalls == 0) {
            meanwhile(static_cast<int>(read), total);
        }
        if (row.isNull(0) || row.isNull(1)) {
            continue;
        }
        if (const DayNumber next = dayNumber(row.text(1)); next != number) {
            number = next;
            day = &days_[number];
        }
        day->stocks.push_back(stockOf(row.text(0)));
        day->gains.push_back(row.number(2));
        day->closes.push_back(closeOf(row));
        ++rows_;
    }
    for (auto& [of, it] : days_) {
        it.stocks.shrink_to_fit();
        it.gains.shrink_to_fit();
        it.closes.shrink_to_fit();
    }
}

const MarketDay& MarketColumns::day(DayNumber day) const {
    static const MarketDay none;
    const auto found = days_.find(day);
    return found == days_.end() ? none : found->second;
}

size_t MarketColumns::bytes() const {
    size_t sum = memberships_.bytes();
    for (const auto& [of, day] : days_) {
        sum += day.stocks.capacity() * sizeof(day.stocks[0]) +
               day.gains.capacity() * sizeof(day.gains[0]) + day.closes.capacity();
    }
    return sum;
}

}  // namespace guanchao
