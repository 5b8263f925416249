// The local store of daily gains, table geguhq of the main store: filled on demand from the
// day-history services, rows are only ever added. Gains in percent against the former day, of
// adjusted prices where the services have factors that belong to them. Dead services leave the
// table as it is and are asked again; failed statements raise StoreError.
#pragma once

#include <QCoro/QCoroTask>
#include <QDate>
#include <QList>
#include <QSet>
#include <QString>
#include <functional>
#include <stop_token>

#include "base/activity.h"
#include "base/globals.h"
#include "platform/clock.h"
#include "research/asked_history.h"
#include "services/day_bars.h"
#include "services/factors.h"
#include "store/stores.h"

namespace guanchao {

// The days that are there of a code; no dates if there is none.
struct CachedDays {
    QString dm;
    QDate oldest;
    QDate newest;
};

// The services of the past.
struct PastPrices {
    DayBars bars;
    Factors factors;
};

// Of the codes whose days no service has brought; their rows stay as they are.
struct MissedDays {
    QSet<QString> codes;
    QString reason;  // of the first, in Chinese
};

// What both parts of the window's run, the downloads and the comparison, tell of a failure.
Activity comparing();

CachedDays cachedDays(Connection& store, const QString& dm);

class DayCache {
public:
    // Told of each code that is to be downloaded.
    using Show = std::function<void(const QString& dm, int done, int total)>;

    DayCache(const Stores& stores, Globals& globals, const Clock& clock, PastPrices prices,
             AskedHistory& asked);

    // Brings the main store up to date for the codes over the days from the first to the last: asks
    // the service for what lies before and behind the days that are there and what it has answered
    // for. Some requests are on their way at a time; what each brings is written at once and stays
    // if the run is stopped.
    QCoro::Task<MissedDays> update(QList<CachedDays> codes, QDate first, QDate last, Show show,
                                   std::stop_token stop);

private:
    // The part of a code's days that one request asks for.
    struct Gap {
        QString dm;
        QDate first;
        QDate last;
        std::function<void()> note;  // that the service has answered for it
    };

    struct Fetched {
        BarsReply reply;
        FactorList factors;
        QString lack;  // why there are no days
    };

    void addGaps(const CachedDays& code, const QDate& first, const QDate& last, QList<Gap>& gaps);
    QCoro::Task<Fetched> fetch(Gap gap, std::stop_token stop) const;
    QCoro::Task<> write(QString dm, Fetched fetched, std::stop_token stop);
    // Returns the days of the rows.
    QList<QDate> writeRows(const QString& dm, const Fetched& fetched);

    const Stores& stores_;
    Globals& globals_;
    const Clock& clock_;
    PastPrices prices_;
    AskedHistory& asked_;
};

}  // namespace guanchao
