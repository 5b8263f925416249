#include "research/laboratory/stock_day.h"

#include <cmath>
#include <limits>

#include "research/market_columns.h"
#include "services/price_limits.h"

namespace guanchao {

namespace {

// In the prices of the day; NaN on the first one.
double formerClose(const StockColumns& stock, size_t at) {
    const size_t former = formerTraded(stock, at);
    return former == stock.size() ? std::numeric_limits<double>::quiet_NaN()
                                  : stock.fuquansp(former) / stock.fuquanyz(at);
}

bool hasOnePrice(const StockColumns& stock, size_t at) {
    return stock.zg(at) == stock.zd(at);
}

}  // namespace

bool isTraded(const StockColumns& stock, size_t at) {
    return stock.kp(at) > 0 && stock.zg(at) > 0 && stock.zd(at) > 0 && stock.sp(at) > 0 &&
           stock.fuquanyz(at) > 0;
}

size_t tradedAt(const StockColumns& stock, DayNumber day) {
    const size_t at = stock.firstFrom(day);
    const bool trades = at < stock.size() && stock.day(at) == day && isTraded(stock, at);
    return trades ? at : stock.size();
}

size_t formerTraded(const StockColumns& stock, size_t at) {
    for (size_t former = at; former-- > 0;) {
        if (stock.day(former) != stock.day(at) && isTraded(stock, former)) {
            return former;
        }
    }
    return stock.size();
}

double gainOf(const StockColumns& stock, size_t at) {
    return (stock.sp(at) / formerClose(stock, at) - 1) * 100;
}

bool closesAtLimit(const StockColumns& stock, size_t at) {
    return gainOf(stock, at) > limitGain && stock.zg(at) == stock.sp(at);
}

bool isClosedToBuyers(const StockColumns& stock, const QString& dm, size_t at) {
    const double former = formerClose(stock, at);
    if (std::isnan(former)) {
        return false;
    }
    const double percent = 100 + limitPercentOn(dm, dateOf(stock.day(at)));
    const double limit = std::floor((std::floor(former + 0.5) * percent + 50) / 100);
    return stock.kp(at) >= limit || (hasOnePrice(stock, at) && stock.sp(at) > former);
}

bool isClosedToSellers(const StockColumns& stock, size_t at) {
    return hasOnePrice(stock, at) && stock.sp(at) < formerClose(stock, at);
}

}  // namespace guanchao
