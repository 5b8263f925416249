// Whether a stock is as a rule wants it on a day, by that day and those before it.
#pragma once

#include "research/laboratory/backtest_rule.h"
#include "research/stock_columns.h"

namespace guanchao {

class StockFilter {
public:
    explicit StockFilter(const BacktestRule& rule) : rule_(rule) {}

    // A stock with fewer than 10 days up to this one is not taken, nor is one of which a number is
    // missing.
    bool takes(const StockColumns& stock, size_t at) const;

private:
    bool takesLimit(const StockColumns& stock, size_t at) const;
    bool takesPosition(const StockColumns& stock, size_t at) const;

    const BacktestRule& rule_;
};

// The volume of the day over the mean of 10 days, the day among them.
double volumeRatio(const StockColumns& stock, size_t at);

// Where the close stands between the low (0) and the high (100) of so many days, or of as many as
// there are, adjusted; NaN where these are one price.
double positionIn(const StockColumns& stock, size_t at, size_t days);

}  // namespace guanchao
