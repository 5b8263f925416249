// What a rule would buy: the stocks that it chooses by the days up to and including a day, for the
// open of the trading day behind it. Nothing behind that day is looked at.
#pragma once

#include <vector>

#include "research/laboratory/backtest_rule.h"
#include "research/laboratory/laboratory_history.h"

namespace guanchao {

struct Signal {
    DayNumber day;
    QString dm;
    const StockColumns* stock;
    QString theme;        // or what else has chosen it
    DayNumber until = 0;  // sold at the last close before this day; 0: by the rule
};

// By the place of the buying day in the calendar; those of a day in the order in which they are
// bought: the theme with more stocks at their limit first, equals by name, then the stock with the
// higher gain of the day, equals by code. A stock comes once a day.
using SignalDays = std::vector<std::vector<Signal>>;

// By the themes of each day. `work` is asked between two days whether to end.
SignalDays themeSignals(const BacktestRule& rule, LaboratoryHistory& history,
                        const ResearchWork& work);

// A row of yejiyuyuejinqi.
struct ReportDate {
    QString dm;
    DayNumber todayriqi;  // 登记日: the report's date was found
    DayNumber yuyuedate;  // 预约日: of the report
};

// Raises StoreError.
std::vector<ReportDate> reportDates(const StoreFile& main);

// By the report dates: bought behind todayriqi and held up to the last day before yuyuedate,
// whatever the rule's days. Those of a day in the order of their gain, as above.
SignalDays reportSignals(const BacktestRule& rule, LaboratoryHistory& history,
                         const std::vector<ReportDate>& reports, const ResearchWork& work);

}  // namespace guanchao
