// The day history of one code, from the services of services.ini in their order: the next one is
// asked where one refuses, is silent or sends what can't stand. Prices in yuan or points,
// unadjusted, volume in shares. Nothing is raised but Cancelled.
#pragma once

#include <QCoro/QCoroTask>
#include <stop_token>

#include "platform/clock.h"
#include "platform/http_client.h"
#include "services/bar_kind.h"

namespace guanchao {

// What the services have said.
struct BarsReply {
    std::optional<QList<DayBar>> days;  // oldest first; nothing if none of them answered
    QString kind;                       // of the one that did
    QStringList lacks;                  // why the others did not, in Chinese
    bool turnedAway = false;            // one of them may have been asked too much
};

class DayBars {
public:
    DayBars(HttpClient& http, const Clock& clock, QList<Service> services);

    // How many codes may be asked for at once.
    int ahead() const { return services_.value(0).ahead; }

    // The days from the first to the last, today's only after the close. `dm` with its exchange, in
    // either case. None for a code that the service doesn't know.
    QCoro::Task<BarsReply> fetch(QString dm, QDate first, QDate last, std::stop_token stop) const;

private:
    struct Answer {
        ReadBars read;
        bool turnedAway = false;
    };

    QCoro::Task<Answer> ask(Service service, BarRange range, std::stop_token stop) const;

    HttpClient& http_;
    const Clock& clock_;
    QList<Service> services_;
};

}  // namespace guanchao
