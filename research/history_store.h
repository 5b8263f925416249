// Makes the two history databases, or adds new days to them. The first holds a table for each
// stock, geguhq with the days of all stocks and dzhzhuti with the themes; the second a table for
// each stock and the empty nishihq2. Prices in hundredths of a yuan. Both may hold lishifanwei
// (历史范围), over which days the services have been asked for a code: a day of that range without
// a row is one on which it was not traded, as long as no stored row has gone.
#pragma once

#include <QList>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>
#include <optional>

#include "research/day_batches.h"
#include "services/factors.h"
#include "store/connection.h"

namespace guanchao {

struct HistoryFiles {
    QString first;
    QString second;
};

struct DayRange {
    QDate first;  // none without one
    QDate last;

    bool isNull() const { return first.isNull(); }
    bool holds(const QDate& day) const { return !isNull() && first <= day && day <= last; }
    bool operator==(const DayRange&) const = default;
};

// By code.
using DayRanges = QMap<QString, DayRange>;

// What the services have been asked for of a code.
struct AskedRange {
    DayRange days;      // none without one
    qint64 stored = 0;  // how many days the code had then, up to the last of the range
    bool withFactors = false;
};

using FactorsOfCodes = QMap<QString, FactorList>;

// Writes the days that are not there, each code and day once, puts the themes, if there are any, in
// the place of those that are there, and the ranges in the place of those of their codes. A file is
// made if it is missing and gets the indexes that it lacks. A code of which only days without
// factors (all are 1) were stored gets its factors on all days; others keep theirs. Raises
// StoreError and std::runtime_error: both files are then as they were, but if the second can't be
// committed, the first has its days, which come into the second the next time.
AddedDays addToHistory(const HistoryFiles& files, const QList<DayRow>& days,
                       const std::optional<QList<ThemeMember>>& themes, const DayRanges& asked = {},
                       const FactorsOfCodes& factors = {});

// Gives its rows to `take`.
using ReadDays = std::function<void(const TakeDay& take)>;

// The same for days that are too many to be held. Raises what `read` raises too.
AddedDays readIntoHistory(const HistoryFiles& files, const ReadDays& read,
                          const std::optional<QList<ThemeMember>>& themes);

// Gives the second file what the first has of these codes and it lacks. Raises StoreError.
void levelSecond(const HistoryFiles& files, const QStringList& codes);

// What services have been asked for, of a file in which no table may tell.
QMap<QString, AskedRange> askedRanges(Connection& history);

// Whether none of the code's stored days has a factor: all are 1.
bool isWithoutFactors(Connection& history, const QString& dm);

// The tables of a file, in upper case.
QSet<QString> tablesOf(Connection& history);

// What the store library sorts for an index lies in a file, which it would map into memory. For the
// beginning of a program, before its first connection.
void keepSortsOutOfMemory();

// Leaves a history as one that another program has made: without indexes.
void dropIndexes(const QString& path);

}  // namespace guanchao
