// The days of all stocks in columns, from geguhq of the first history database, read in one pass,
// in which the store itself judges what is stored as a text, a number or nothing. 13 bytes a row,
// so that ten years of the whole market (13 million rows) take 170 MB.
#pragma once

#include <QStringList>
#include <functional>
#include <map>

#include "research/day_number.h"
#include "research/memberships.h"

namespace guanchao {

// A stock that has gained more percent and closes at its high stands at its limit.
inline constexpr double limitGain = 9.5;

// The rows of a day, in the order of the table; the three stand side by side.
struct MarketDay {
    std::vector<std::int32_t> stocks;
    std::vector<double> gains;  // over qiansp, in percent, not rounded; NaN if one is not there
    std::vector<std::uint8_t> closes;

    // Bits of closes, by the prices as stored: zg=sp and zg=zd.
    static constexpr std::uint8_t atHigh = 1;
    static constexpr std::uint8_t atOnePrice = 2;

    bool isAtLimit(size_t row) const {
        return gains[row] > limitGain && (closes[row] & atHigh) != 0;
    }
    // The whole day.
    bool isAtOnePriceOfLimit(size_t row) const {
        return gains[row] > limitGain && (closes[row] & atOnePrice) != 0;
    }
};

// Rows of geguhq without a day that can be read, or without a price: of no account for any theme.
struct UnusableRows {
    int count = 0;
    QStringList first;  // "SH600000 2025-07-03", three at most
};

class MarketColumns {
public:
    using Meanwhile = std::function<void(int done, int total)>;

    // `meanwhile` is called every few milliseconds with how many rows are read; what it raises ends
    // the reading. Raises StoreError.
    MarketColumns(Connection& firstHistory, const Meanwhile& meanwhile);

    const Memberships& memberships() const { return memberships_; }
    const std::map<DayNumber, MarketDay>& days() const { return days_; }
    // Without rows for a day that has none.
    const MarketDay& day(DayNumber day) const;

    const UnusableRows& unusable() const { return unusable_; }

    size_t rows() const { return rows_; }
    size_t bytes() const;

private:
    void noteUnusable(std::string_view dm, std::string_view time);

    Memberships memberships_;
    std::map<DayNumber, MarketDay> days_;
    UnusableRows unusable_;
    size_t rows_ = 0;
};

}  // namespace guanchao
