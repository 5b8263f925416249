#include "research/laboratory/report_returns.h"

#include <algorithm>
#include <cmath>

namespace guanchao {

namespace {

double orZero(double price) {
    return std::isnan(price) ? 0 : price;
}

QList<AdjustedDay> daysOf(const StockColumns* stock, const ReportDate& report) {
    QList<AdjustedDay> days;
    if (!stock) {
        return days;
    }
    const size_t behind = stock->firstFrom(report.yuyuedate);
    for (size_t at = stock->firstFrom(report.todayriqi); at < behind; ++at) {
        days << AdjustedDay{dayText(stock->day(at)), orZero(stock->fuquankp(at)) / 100,
                            orZero(stock->fuquansp(at)) / 100};
    }
    return days;
}

}  // namespace

QList<ReportReturn> reportReturns(LaboratoryHistory& history, std::vector<ReportDate> reports) {
    std::ranges::stable_sort(reports, {}, &ReportDate::dm);
    QList<ReportReturn> returns;
    CodeReturns ofCode;
    for (const ReportDate& report : reports) {
        if (returns.isEmpty() || returns.last().dm != report.dm) {
            ofCode = CodeReturns();
        }
        const QList<AdjustedDay> days = daysOf(history.stock(report.dm), report);
        const ForwardGains gains = ofCode.next(dayText(report.todayriqi), [&days] { return days; });
        returns << ReportReturn{
            report.dm, {}, report.todayriqi, report.yuyuedate, static_cast<int>(days.size()),
            gains};
    }
    std::ranges::stable_sort(returns, std::greater(), &ReportReturn::todayriqi);
    return returns;
}

}  // namespace guanchao
