// When a stock that was bought is sold again, by the days behind the buy as they come. T+1: never
// on the day of the buy. On each day of the stock, in this order:
//  - what an earlier day has decided or couldn't do is sold at the open;
//  - an open at or under the stop, then one at or over the profit to take, sells at the open;
//  - a low at the stop sells at the stop, else a high at the profit at that: where a day reaches
//    both, the stop counts, since which came first is not known;
//  - on its last day it is sold at the close;
//  - a close below the former one, the day of the buy among them, sells at the next open.
// A day of one price below the former close sells nothing.
#pragma once

#include <optional>

#include "research/laboratory/backtest_rule.h"
#include "research/stock_columns.h"

namespace guanchao {

enum class SaleReason : std::uint8_t { days, stopLoss, takeProfit, firstFall, report };

QString wordsOf(SaleReason reason);

struct Sale {
    size_t at;     // the day among those of the stock
    double price;  // adjusted
    bool atOpen;
    SaleReason reason;
};

// `bought` is the day of the buy, at its open. With a `lastDay` the rule's days don't count: it is
// sold at the close of that day, or at the open of the next one on which it trades. Nothing if the
// history ends before.
std::optional<Sale> saleOf(const StockColumns& stock, size_t bought, const BacktestRule& rule,
                           std::optional<DayNumber> lastDay);

}  // namespace guanchao
