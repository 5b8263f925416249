#include "base/day_line.h"

#include <algorithm>
#include <cmath>

namespace guanchao {

int tradingMinute(int minuteOfDay) {
    constexpr int open = 9 * 60 + 30;
    constexpr int noon = 11 * 60 + 30;
    constexpr int afternoon = 13 * 60;
    const int morning = std::clamp(minuteOfDay, open, noon) - open;
    return std::min(morning + std::max(minuteOfDay - afternoon, 0), lastTradingMinute);
}

std::optional<double> meanPrice(const DayPoint& point) {
    constexpr double mostLimit = 1.45;  // beyond any day's limits
    const double mean = point.volume > 0 ? double(point.turnover) / point.volume : 0;
    const bool isPrice = mean > point.price / mostLimit && mean < point.price * mostLimit;
    return isPrice ? std::optional(mean) : std::nullopt;
}

double volumePerMinute(const DayLine& line, qsizetype point) {
    const DayPoint& it = line.points[point];
    const DayPoint before = point > 0 ? line.points[point - 1] : DayPoint();
    const int minutes = tradingMinute(it.minute) - tradingMinute(before.minute);
    return std::max(double(it.volume) - before.volume, 0.0) / std::max(minutes, 1);
}

PriceRange pricesOf(const DayLine& line) {
    double most = line.formerClose * 0.001;
    for (const DayPoint& point : line.points) {
        most = std::max(most, std::abs(point.price - line.formerClose));
    }
    return {line.formerClose - most, line.formerClose + most};
}

}  // namespace guanchao
