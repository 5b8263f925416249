// The mean volume of the last ten full trading days, in shares, from the day-history services.
// Fetched once a code and a day for the whole program; a fetch that brings fewer days is made again
// at the next asking.
#pragma once

#include <QCoro/QCoroTask>
#include <QDate>
#include <QHash>
#include <QString>
#include <stop_token>

#include "platform/clock.h"
#include "platform/http_client.h"

namespace guanchao {

class MeanVolume {
public:
    MeanVolume(HttpClient& http, const QList<Service>& history, const Clock& clock)
        : http_(http), history_(history), clock_(clock) {}

    // 0 while it can't be had. `dm` with its exchange, in either case.
    QCoro::Task<double> of(QString dm, std::stop_token stop);

private:
    struct Known {
        QDate day;  // on which it was fetched
        double mean = 0;
    };

    QCoro::Task<double> fetch(QString dm, QDate today, std::stop_token stop) const;

    HttpClient& http_;
    const QList<Service>& history_;
    const Clock& clock_;
    QHash<QString, Known> known_;
};

}  // namespace guanchao
