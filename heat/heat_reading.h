// What a window of the internet figures shows, read from the heat store at one moment, in whatever
// thread. Failed statements raise StoreError.
#pragma once

#include <memory>

#include "heat/heat_days.h"
#include "store/stores.h"

namespace guanchao {

struct HeatQuestion {
    bool all = false;  // every item there is, not those of the latest day
    QString today;     // date text
    QString item;      // whose history; empty: none

    bool operator==(const HeatQuestion&) const = default;
};

// The items of the latest day, or every item.
void readRanking(Connection& heat, const HeatSubject& subject, const HeatQuestion& question,
                 ResultGrid& ranking);

// The history of the item, returned for its plot too.
QList<DayValues> readHistory(Connection& heat, const HeatSubject& subject, const QString& item,
                             ResultGrid& history);

struct HeatReading {
    HeatQuestion question;
    ResultGrid ranking;
    ResultGrid history;
    QList<DayValues> historyDays;
    HeatDays lastDays;
};

std::shared_ptr<HeatReading> readHeat(const StoreFile& heat, const HeatSubject& subject,
                                      const HeatQuestion& question);

}  // namespace guanchao
