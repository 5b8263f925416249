// The themes for a history database, from a text file of any encoding that the program reads: a
// header with the columns zhutiname (or 主题, 题材) and dm (or 代码), then a line a membership.
#pragma once

#include "tools/history_builder/day_rows.h"

namespace guanchao {

// Members of the exchange in Beijing are skipped. Raises OperationError if the file can't be read
// and std::runtime_error, in Chinese and naming the line, for the first bad row.
QList<ThemeMember> readThemeMembers(const QString& path, SkippedRows& skipped);

}  // namespace guanchao
