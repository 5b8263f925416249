// What back-tests read: both history databases in columns, with the themes of each day. For one
// thread at a time.
#pragma once

#include <QSet>
#include <optional>

#include "research/history_columns.h"
#include "research/laboratory/market_calendar.h"
#include "research/laboratory/theme_days.h"
#include "research/research_run.h"

namespace guanchao {

// What stays from run to run, as long as the files are as they were.
struct LaboratoryColumns {
    HistoryColumns columns;
    FileStamp counted;  // the first file as its themes were counted
    std::optional<ThemeDays> themeDays;
};

// Of one run.
class LaboratoryHistory {
public:
    // Reads what is not there yet and tells how far it is. Raises StoreError, and Cancelled if the
    // user stops it.
    LaboratoryHistory(const Stores& stores, LaboratoryColumns& kept, ResearchWork& work);

    const MarketCalendar& calendar() const { return calendar_; }
    const MarketDay& day(DayNumber day) const { return market_->day(day); }
    const Memberships& memberships() const { return market_->memberships(); }
    const ThemeDays& themeDays() const { return *kept_.themeDays; }

    // Read at its first use; null where the history has no table of the code. Raises StoreError.
    const StockColumns* stock(const QString& dm);

private:
    void readMarket(ResearchWork& work);

    LaboratoryColumns& kept_;
    Connection firstHistory_;
    Connection secondHistory_;
    MarketCalendar calendar_;
    const MarketColumns* market_ = nullptr;
    QSet<QString> tables_;
};

}  // namespace guanchao
