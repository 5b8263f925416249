// 回测: what a capital would have become by a rule, day by day of the index. The open comes first:
// what is to be sold at it is sold, then the signals of the day before are bought in their order,
// each for one part of the capital as it stood at the close before, or for what money there is.
// Not bought is what doesn't trade on that day, what nobody sells, what is held already, and what
// finds no free part; the signal then lapses. What is sold later in the day frees its part for
// the next day. A stock that doesn't trade is worth its last close. Parts are not rounded to lots.
// Gains go by adjusted prices, less the costs.
#pragma once

#include <QList>
#include <optional>

#include "research/laboratory/report_returns.h"
#include "research/laboratory/sale.h"
#include "research/laboratory/signals.h"

namespace guanchao {

struct BacktestDay {
    DayNumber day;
    double capital;   // 1 at the beginning
    double index;     // the same of SH000001, from its close before the first day on
    double drawdown;  // of the capital under its highest, in percent, 0 or below
};

struct Trade {
    QString dm;
    QString jc;  // by the code table; empty as long as nobody has looked
    QString theme;
    DayNumber signalDay;
    DayNumber buyDay;
    double buyPrice;    // as traded, in yuan
    DayNumber sellDay;  // of one that is still held, that of its last price
    double sellPrice;
    std::optional<SaleReason> reason;  // none: still held
    double gain;                       // percent, less the costs
};

struct BacktestSum {
    double gain = 0;       // percent
    double indexGain = 0;  // percent
    double drawdown = 0;   // percent, 0 or below
    int trades = 0;        // sold
    int wins = 0;          // sold with a gain above 0
    double meanGain = 0;   // of those sold, in percent
    int held = 0;          // at the end

    // Signals that were not bought.
    int heldAlready = 0;
    int halted = 0;
    int atLimit = 0;
    int withoutPlace = 0;
    int tooLate = 0;  // the report's day has come

    double winShare() const { return trades > 0 ? wins * 100.0 / trades : 0; }
};

struct BacktestResult {
    BacktestRule rule;
    QList<BacktestDay> days;
    QList<Trade> trades;          // in the order of their buys
    QList<ReportReturn> returns;  // of a single test, where report dates give the signals
    BacktestSum sum;
};

// `signalDays` goes by the days of the calendar. A year without days gives a result without days.
BacktestResult backtest(const BacktestRule& rule, const MarketCalendar& calendar,
                        const SignalDays& signalDays);

// With the signals that the rule asks for. Raises StoreError, and Cancelled if `work` is stopped.
BacktestResult backtest(const BacktestRule& rule, LaboratoryHistory& history,
                        const std::vector<ReportDate>& reports, const ResearchWork& work);

}  // namespace guanchao
