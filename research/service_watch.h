// HttpClient over another that remembers of each host how it has answered, for a window that tells
// the user. In the thread that shows.
#pragma once

#include <QDateTime>
#include <QHash>

#include "platform/clock.h"
#include "platform/http_client.h"

namespace guanchao {

class ServiceWatch : public HttpClient {
public:
    ServiceWatch(HttpClient& http, const Clock& clock) : http_(http), clock_(clock) {}

    QCoro::Task<HttpReply> get(Service service, QString path, std::stop_token stop) override;

    // In Chinese: 应答 12 次, or why it didn't the last time.
    QString stateOf(const Service& service) const;

private:
    struct State {
        int answers = 0;
        QString failure;  // of the last request, empty if it was answered
        QDateTime when;   // of it
    };

    HttpClient& http_;
    const Clock& clock_;
    QHash<QString, State> states_;  // by host
};

}  // namespace guanchao
