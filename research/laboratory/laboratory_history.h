// What back-tests read: both history databases in columns, with the themes of each day. For one
// thread at a time.
#pragma once

#include <QSet>

#include "research/history_columns.h"
#include "research/laboratory/market_calendar.h"
#include "research/research_run.h"

namespace guanchao {

// Of one run.
class LaboratoryHistory {
public:
    // Reads what is not there yet and tells how far it is. Raises StoreError, and Cancelled if the
    // user stops it.
    LaboratoryHistory(const Stores& stores, HistoryColumns& columns, ResearchWork& work);

    const MarketCalendar& calendar() const { return calendar_; }
    const MarketDay& day(DayNumber day) const { return columns_.market().day(day); }
    const Memberships& memberships() const { return columns_.market().memberships(); }
    const ThemeDays& themeDays() const { return *themeDays_; }

    // Read at its first use; null where the history has no table of the code. Raises StoreError.
    const StockColumns* stock(const QString& dm);

private:
    HistoryColumns& columns_;
    Connection firstHistory_;
    Connection secondHistory_;
    MarketCalendar calendar_;
    QSet<QString> tables_;
    const ThemeDays* themeDays_ = nullptr;
};

}  // namespace guanchao
