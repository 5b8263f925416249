// What the history databases have, and what they still lack of the days that are wanted. A store
// that can't be read raises StoreError.
#pragma once

#include <QDate>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "research/history_store.h"

namespace guanchao {

// Of one code.
struct StoredDays {
    QDate first;  // none without days
    QDate last;
    int count = 0;
    DayRange asked;  // none where days of that time have gone
    bool askedForFactors = false;
    int gaps = 0;  // market days from the first on without a row, for which nobody was asked
};

// A stored day to which new rows are joined.
struct Neighbour {
    QDate day;
    qint64 close = 0;  // in hundredths
    double factor = 1;
};

struct HistoryState {
    QList<QDate> marketDays;   // of the index, oldest first
    QList<Neighbour> ofIndex;  // as CodeGap::stored
    QHash<QString, StoredDays> codes;
    QStringList behind;  // codes of which the second file lacks something
    qint64 bytes = 0;    // of both files
};

// Called between two codes; what it raises ends the reading.
using BetweenCodes = std::function<void()>;

// Of files that may be missing; days behind today don't count.
HistoryState readHistoryState(const HistoryFiles& files, const QStringList& codes,
                              const QDate& today, const BetweenCodes& between);

// The days of a code to ask for, and what is known of it then.
struct CodeGap {
    QString dm;
    DayRange days;  // none: only its factors are asked for
    DayRange askedThen;
    int missing = 0;  // market days
    // The stored days from the last one before the first missing day on, oldest first: of days with
    // one factor the first and the last.
    QList<Neighbour> stored;
};

// The gap of the code within the days that are wanted, from its first missing market day to its
// last; nothing where none is missing.
std::optional<CodeGap> gapOf(Connection& history, const QString& dm, const StoredDays& stored,
                             const QList<QDate>& marketDays, const DayRange& wanted);

// Stored days without factors whose factors nobody has been asked for; a gap of no days.
std::optional<CodeGap> factorGapOf(Connection& history, const QString& dm,
                                   const StoredDays& stored);

// The last day of a code before that day.
std::optional<Neighbour> neighbourBefore(Connection& history, const QString& dm, const QDate& day);

// Both together, or the later one where days are left between them.
DayRange joined(const DayRange& asked, const DayRange& then);

}  // namespace guanchao
