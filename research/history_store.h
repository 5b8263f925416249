// Makes the two history databases, or adds new days to them. The first holds a table for each
// stock, geguhq with the days of all stocks and dzhzhuti with the themes; the second a table for
// each stock and the empty nishihq2. Prices in hundredths of a yuan.
#pragma once

#include <QList>
#include <QString>
#include <optional>

#include "research/day_row.h"

namespace guanchao {

struct HistoryFiles {
    QString first;
    QString second;
};

// Writes the days that are not there, each code and day once, and puts the themes, if given, in the
// place of those that are there. A file is made if it is missing and gets the indexes that it
// lacks. Returns how many days the first file got. Raises StoreError and std::runtime_error: the
// file in work is then as it was; days that the first file has got come into the second the next
// time.
int addToHistory(const HistoryFiles& files, const QList<DayRow>& days,
                 const std::optional<QList<ThemeMember>>& themes);

// Leaves a history as one that another program has made: without indexes.
void dropIndexes(const QString& path);

}  // namespace guanchao
