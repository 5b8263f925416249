#include "services/bar_check.h"

#include <algorithm>
#include <cmath>

#include "services/trading_day.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

bool pricesFit(const DayBar& bar) {
    const auto prices = {bar.open, bar.high, bar.low, bar.close};
    return std::ranges::all_of(prices, [&](double price) {
        return price > 0 && isPrice(price) && price <= bar.high && price >= bar.low;
    });
}

bool volumesFit(const DayBar& bar) {
    const auto isCount = [](double value) { return std::isfinite(value) && value >= 0; };
    return isCount(bar.volume) && isCount(bar.turnover.value_or(0));
}

QString faultOf(const DayBar& bar, const QDate& before, const QDate& today) {
    if (!bar.day.isValid()) {
        return u"应答里有读不出的日期"_s;
    }
    const QString day = bar.day.toString(Qt::ISODate);
    if (bar.day > today) {
        return day + u" 还没有到"_s;
    }
    if (before.isValid() && bar.day <= before) {
        return day + u" 的次序不对"_s;
    }
    return pricesFit(bar) && volumesFit(bar) ? QString() : day + u" 的数字不对"_s;
}

}  // namespace

bool isPrice(double value) {
    constexpr double least = 1e-9;
    constexpr double most = 1e9;
    return value == 0 || (std::isfinite(value) && value >= least && value <= most);
}

ReadBars checkedBars(const ReadBars& read, const BarRange& range) {
    const QDate last = std::min(range.last, lastDayOver(range.now));
    ReadBars checked = {{}, read.fault};
    QDate before;
    for (const DayBar& bar : read.bars) {
        const bool isWanted = bar.day >= range.first && bar.day <= last;
        const bool isPast = bar.day.isValid() && bar.day <= range.now.date();
        if (isPast && !isWanted) {
            continue;
        }
        checked.fault = faultOf(bar, before, range.now.date());
        if (!checked.fault.isEmpty()) {
            return {{}, checked.fault};
        }
        checked.bars << bar;
        before = bar.day;
    }
    return checked;
}

}  // namespace guanchao
