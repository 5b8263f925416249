#include "research/market_columns.h"

#include "store/recordset.h"
#include "store/row_cursor.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr size_t rowsBetweenCalls = 4096;

const QString rowsOfTheMarket =
    u"select dm,shijian,(cast(sp as Double)/cast(qiansp as Double)-1)*100,zg=sp,zg=zd,qiansp=0 from"
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

// A row is of the same day as the one before or, in a table by stocks, mostly of the next one.
class DayOfRow {
public:
    explicit DayOfRow(std::map<DayNumber, MarketDay>& days) : days_(days), at_(days.end()) {}

    MarketDay& operator()(DayNumber day) {
        if (at_ != days_.end() && at_->first != day) {
            ++at_;
        }
        if (at_ == days_.end() || at_->first != day) {
            at_ = days_.try_emplace(day).first;
        }
        return at_->second;
    }

private:
    std::map<DayNumber, MarketDay>& days_;
    std::map<DayNumber, MarketDay>::iterator at_;
};

std::uint8_t closeOf(const RowCursor& row) {
    const bool atHigh = row.castToDouble(3) == 1;
    const bool atOnePrice = row.castToDouble(4) == 1;
    return static_cast<std::uint8_t>((atHigh ? MarketDay::atHigh : 0) |
                                     (atOnePrice ? MarketDay::atOnePrice : 0));
}

}  // namespace

MarketColumns::MarketColumns(Connection& firstHistory, const Meanwhile& meanwhile)
    : memberships_(firstHistory) {
    const int total = lastRow(firstHistory);
    StockOfRow stockOf(memberships_);
    DayOfRow dayOf(days_);
    RowCursor row(firstHistory, rowsOfTheMarket);
    for (size_t read = 0; row.next(); ++read) {
        if (read % rowsBetweenCalls == 0) {
            meanwhile(static_cast<int>(read), total);
        }
        const std::string_view time = row.date(1);
        const std::string_view dm = row.text(0);
        if (time.empty()) {
            noteUnusable(dm, row.text(1));
        }
        if (time.empty() || (dm.empty() && row.isNull(0))) {
            continue;
        }
        MarketDay& day = dayOf(dayNumber(time));
        day.stocks.push_back(stockOf(dm));
        day.gains.push_back(row.castToDouble(2));
        // On its first day a stock has no former close.
        if (row.isNull(2) && row.castToDouble(5) != 1) {
            noteUnusable(dm, time);
        }
        day.closes.push_back(closeOf(row));
        ++rows_;
    }
    for (auto& [of, it] : days_) {
        it.stocks.shrink_to_fit();
        it.gains.shrink_to_fit();
        it.closes.shrink_to_fit();
    }
}

void MarketColumns::noteUnusable(std::string_view dm, std::string_view time) {
    constexpr qsizetype mostNamed = 3;
    ++unusable_.count;
    if (unusable_.first.size() < mostNamed) {
        unusable_.first << QString::fromUtf8(dm) + u' ' + QString::fromUtf8(time);
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
