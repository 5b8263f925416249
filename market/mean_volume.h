// The mean volume of the last ten full trading days, in shares, from the day-history service.
// Fetched once a code and a day for the whole program; a fetch that brings fewer days is made again
// at the next asking.
#pragma once

#include <QDate>
#include <QHash>
#include <QString>

#include "platform/clock.h"
#include "platform/http.h"

namespace guanchao {

class MeanVolume {
public:
    MeanVolume(Http& http, const Service& history, const Clock& clock)
        : http_(http), history_(history), clock_(clock) {}

    // 0 while it can't be had. `dm` with its exchange, in either case.
    double of(const QString& dm);

private:
    struct Known {
        QDate day;  // on which it was fetched
        double mean = 0;
    };

    double fetch(const QString& dm, QDate today) const;

    Http& http_;
    const Service& history_;
    const Clock& clock_;
    QHash<QString, Known> known_;
};

}  // namespace guanchao
