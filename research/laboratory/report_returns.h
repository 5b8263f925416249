// 后期涨幅: what buying each stock behind the day on which its report date was announced, and
// holding it up to that date, would have gained.
#pragma once

#include "research/forward_returns.h"
#include "research/laboratory/signals.h"

namespace guanchao {

struct ReportReturn {
    QString dm;
    QString jc;  // by the code table; empty as long as nobody has looked
    DayNumber todayriqi;
    DayNumber yuyuedate;
    int days;  // of the history between; without one there are no gains
    ForwardGains gains;
};

// The newest announcement first. Raises StoreError.
QList<ReportReturn> reportReturns(LaboratoryHistory& history, std::vector<ReportDate> reports);

}  // namespace guanchao
