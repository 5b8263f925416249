// The local store of daily gains, table geguhq of the main store: filled on demand from the
// day-history service, rows are only ever added. Gains in percent against the former day. A dead
// service leaves the table as it is and is asked again; failed statements raise StoreError.
#pragma once

#include <QDate>
#include <QList>
#include <QString>

#include "base/cancellable_run.h"
#include "base/globals.h"
#include "market/day_history.h"
#include "platform/clock.h"
#include "research/asked_history.h"
#include "store/connection.h"

namespace guanchao {

class DayCache {
public:
    DayCache(Globals& globals, const Clock& clock, DayHistory history, AskedHistory& asked,
             CancellableRun& run);

    // Brings the main store up to date for `dm` over the days from the first to the last: asks the
    // service for what lies before and behind the days that are there and what it has answered for.
    // Events happen after each download.
    void update(Connection& store, const QString& dm, const QDate& first, const QDate& last);

private:
    // False if the service didn't answer.
    bool download(Connection& store, const QString& dm, const QDate& first, const QDate& last);
    void write(Connection& store, const QString& dm, const QList<HistoryDay>& days);

    Globals& globals_;
    const Clock& clock_;
    DayHistory history_;
    AskedHistory& asked_;
    CancellableRun& run_;
};

}  // namespace guanchao
