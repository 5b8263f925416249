// A day of a stock as an order meets it. Prices are in hundredths of a yuan; the limit of a day
// goes by the former close in the prices of the day, rounded to a whole hundredth, and is rounded
// in the same way, a half upwards, as the exchanges do.
#pragma once

#include "research/stock_columns.h"

namespace guanchao {

// Where the day stands; size() if the stock didn't trade on it. Of a day that stands there twice
// the first counts.
size_t tradedAt(const StockColumns& stock, DayNumber day);

// All four prices and the factor are there.
bool isTraded(const StockColumns& stock, size_t at);

// The last place before this one on which it traded; size() if there is none.
size_t formerTraded(const StockColumns& stock, size_t at);

// The gain over the former close in percent; NaN on the first day.
double gainOf(const StockColumns& stock, size_t at);

// Up by more than 9.5 % at the high of the day, as the limit-ups of a theme are counted.
bool closesAtLimit(const StockColumns& stock, size_t at);

// Nobody sells: it opens at its upper limit, or has one price all day above the former close.
bool isClosedToBuyers(const StockColumns& stock, const QString& dm, size_t at);

// Nobody buys: it has one price all day below the former close.
bool isClosedToSellers(const StockColumns& stock, size_t at);

}  // namespace guanchao
