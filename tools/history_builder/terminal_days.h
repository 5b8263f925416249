// Day data of a trading terminal: vipdoc/sh/lday/sh600000.day holds the days of the code that its
// name tells, 32 bytes a day.
#pragma once

#include "tools/history_builder/day_rows.h"

namespace guanchao {

// Raises OperationError or std::runtime_error, naming file and row, for a file that is none.
void readTerminalDays(const QString& path, const TakeDay& take, SkippedRows& skipped);

}  // namespace guanchao
