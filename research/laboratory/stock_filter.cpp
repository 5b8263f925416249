#include "research/laboratory/stock_filter.h"

#include <algorithm>
#include <limits>

#include "research/laboratory/stock_day.h"

namespace guanchao {

namespace {

constexpr size_t daysOfRatio = 10;
constexpr double onlyAtLimit = 1;
constexpr double onlyBelowLimit = 2;

bool isWithin(double value, double from, double to) {
    return value >= from && value <= to;
}

}  // namespace

double volumeRatio(const StockColumns& stock, size_t at) {
    double sum = 0;
    for (size_t back = 0; back < daysOfRatio; ++back) {
        sum += stock.chengjiaol(at - back);
    }
    return stock.chengjiaol(at) / (sum / daysOfRatio);
}

double positionIn(const StockColumns& stock, size_t at, size_t days) {
    double low = std::numeric_limits<double>::infinity();
    double high = 0;
    for (size_t back = 0; back < days && back <= at; ++back) {
        const size_t day = at - back;
        if (isTraded(stock, day)) {
            const double factor = stock.fuquanyz(day);
            low = std::min(low, factor * stock.zd(day));
            high = std::max(high, factor * stock.zg(day));
        }
    }
    return high > low ? (stock.fuquansp(at) - low) / (high - low) * 100
                      : std::numeric_limits<double>::quiet_NaN();
}

bool StockFilter::takes(const StockColumns& stock, size_t at) const {
    return at + 1 >= daysOfRatio && isWithin(gainOf(stock, at), rule_.gainFrom, rule_.gainTo) &&
           isWithin(volumeRatio(stock, at), rule_.volumeRatioFrom, rule_.volumeRatioTo) &&
           takesLimit(stock, at) && takesPosition(stock, at);
}

bool StockFilter::takesLimit(const StockColumns& stock, size_t at) const {
    if (rule_.atLimit == onlyAtLimit) {
        return closesAtLimit(stock, at);
    }
    return rule_.atLimit != onlyBelowLimit || !closesAtLimit(stock, at);
}

bool StockFilter::takesPosition(const StockColumns& stock, size_t at) const {
    if (rule_.positionFrom <= 0 && rule_.positionTo >= 100) {
        return true;
    }
    const double position = positionIn(stock, at, static_cast<size_t>(rule_.positionDays));
    return isWithin(position, rule_.positionFrom, rule_.positionTo);
}

}  // namespace guanchao
