// The local store of daily gains, table geguhq of the main store: filled on demand from the
// day-history service, rows are only ever added. Gains in percent against the former day. A dead
// service leaves the table as it is; failed statements raise StoreError.
#pragma once

#include <QDate>
#include <QHash>
#include <QList>
#include <QString>

#include "app/cancellable_run.h"
#include "app/globals.h"
#include "research/day_history.h"
#include "store/connection.h"

namespace guanchao {

class DayCache {
public:
    DayCache(Globals& globals, DayHistory history, CancellableRun& run);

    // Brings the main store up to date for `dm` over the days from the first to the last: asks the
    // service for what lies before and behind the days that are there. Events happen after each
    // download.
    void update(Connection& store, const QString& dm, const QDate& first, const QDate& last);

private:
    void download(Connection& store, const QString& dm, const QDate& first, const QDate& last);
    void write(Connection& store, const QString& dm, const QList<HistoryDay>& days);

    Globals& globals_;
    DayHistory history_;
    CancellableRun& run_;
    // The oldest day of a download has no gain and is not stored, so the rows begin later than what
    // was asked for. From here a second run over the same days knows that they are there.
    QHash<QString, QDate> askedFrom_;
};

}  // namespace guanchao
