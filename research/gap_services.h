// The services of the past, asked for the missing days of one code.
#pragma once

#include <QCoro/QCoroTask>
#include <stop_token>

#include "platform/clock.h"
#include "research/history_state.h"
#include "services/day_bars.h"
#include "services/factors.h"
#include "services/services.h"

namespace guanchao {

// What came of a gap.
struct FilledGap {
    CodeGap gap;
    QList<DayRow> rows;
    std::optional<FactorList> factors;  // where the code has some
    DayRange asked;       // over which days the services have answered for the code by now
    bool isKnown = true;  // to the services
    QString lack;         // why nothing came, in Chinese; empty if it did
    bool turnedAway = false;
};

class GapServices {
public:
    GapServices(HttpClient& http, const Clock& clock, const Services& services);

    // Why no stock can be filled, whatever the services answer; empty if it can.
    QString fault() const;
    bool namesFactors() const { return namesFactors_; }
    // How many gaps may be asked for at once.
    int ahead() const;

    // Where factors are named, a stock comes from the services to whose prices they belong, and
    // without its factors it is left. Raises nothing but Cancelled.
    QCoro::Task<FilledGap> fetch(CodeGap gap, std::stop_token stop) const;

private:
    QCoro::Task<FilledGap> fetchFactors(CodeGap gap, std::stop_token stop) const;
    DayRange toldOf(const CodeGap& gap, const QList<DayBar>& bars) const;

    const Clock& clock_;
    bool isOff_;
    bool namesFactors_;
    bool hasPricesWithFactors_;
    DayBars bars_;
    DayBars barsWithFactors_;
    Factors factors_;
};

}  // namespace guanchao
