// What a fill of the history databases does with their files, in a thread and without a service.
// Stores that can't be read or written raise StoreError. `between` is called between two codes;
// what it raises ends the work.
#pragma once

#include <QPair>

#include "base/activity.h"
#include "research/day_quotes.h"
#include "research/history_state.h"

namespace guanchao {

// In one transaction.
inline constexpr qsizetype codesInABatch = 20;

// What a failure of any of this names.
Activity filling();

// As readHistoryState(), with the second file brought level with the first: a kill between the two
// left it behind.
HistoryState levelledState(const HistoryFiles& files, const QStringList& codes, const QDate& today,
                           const BetweenCodes& between);

// The rows of quotes that go on from the stored days. A former close that isn't the stored one is a
// dividend: that needs factors and stays a gap.
QList<DayRow> rowsThatGoOn(const HistoryFiles& files, const QList<DayQuote>& quotes);

// By codes, the days that are wanted of each.
using WantedDays = QList<QPair<QString, DayRange>>;

// With factors, also those of which only the factors are missing.
QList<CodeGap> gapsOf(const HistoryFiles& files, const HistoryState& state,
                      const WantedDays& wanted, bool withFactors, const BetweenCodes& between);

}  // namespace guanchao
