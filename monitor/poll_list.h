// The poll list jiankonghq: which stocks the alarm engine asks for, and how many may stand in it.
// The frequency (seconds between polls) is at once the most stocks that the list may hold. All
// functions work on a connection to the main store; they raise StoreError, and OperationError where
// the row of the frequency is missing.
#pragma once

#include <QString>
#include <optional>

#include "store/connection.h"
#include "store/recordset.h"

namespace guanchao {

// jiankongpinlu: the stored frequency, nothing if the row of parameters is missing.
std::optional<Value> storedFrequency(Connection& connection);

// The same for those that can't go on without it: raises OperationError if there is none.
Value neededFrequency(Connection& connection);

int pollListCount(Connection& connection);

// Puts the stock on the list unless it stands there.
void addToPollList(Connection& connection, const QString& dm, const QString& jc);

// Takes every stock off the list that neither a stock monitor nor a monitored theme, as its members
// are now, still needs. It adds none.
void sweepPollList(Connection& connection);

}  // namespace guanchao
