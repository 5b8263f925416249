// HttpClient over another that spares the services: it keeps the pause of a service between its
// requests, and leaves an address alone for a while once that has said that it is asked too much,
// or has failed time and again. What can't be reached at all is spared by itself.
#pragma once

#include <QDateTime>
#include <QHash>
#include <chrono>
#include <functional>

#include "base/pause.h"
#include "platform/clock.h"
#include "platform/http_client.h"

namespace guanchao {

// After so long an address at rest is asked again.
inline constexpr std::chrono::seconds longerThanARest(95);

// For whoever waits so long from now on: 10:01:35 再试.
QString triedAgainWords(const Clock& clock);

class PoliteHttp : public HttpClient {
public:
    PoliteHttp(HttpClient& http, const Clock& clock, Wait wait = pause);

    // A request to an address at rest ends at once as `resting`.
    QCoro::Task<HttpReply> get(Service service, QString path, std::stop_token stop) override;

private:
    struct Address {
        bool hasAnswered = false;
        int failuresInARow = 0;
        QDateTime restsUntil;
        QString restsFor;  // why
        QDateTime free;    // for its next request
    };

    bool rests(const QString& host) const;
    HttpReply resting(const QString& host) const;
    std::chrono::milliseconds takeTurn(const Service& service);
    void judge(const QString& host, HttpReply& reply);

    HttpClient& http_;
    const Clock& clock_;
    Wait wait_;
    QHash<QString, Address> addresses_;  // by host
};

}  // namespace guanchao
