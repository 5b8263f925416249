// HttpClient over another that remembers of each service how it has answered, for windows that tell
// the user. What the same host is asked for another purpose, or in another kind, counts by itself.
// In the thread that shows.
#pragma once

#include <QDateTime>
#include <QHash>
#include <optional>

#include "platform/clock.h"
#include "platform/http_client.h"

namespace guanchao {

class ServiceWatch : public HttpClient {
public:
    struct State {
        int answers = 0;
        QDateTime answered;      // when it did last; invalid if it never has
        QDateTime failed;        // when it last failed; likewise
        QString reason;          // of that, in Chinese
        QDateTime failsSince;    // the first one in a row; invalid once it has answered
        int failuresInARow = 0;  // those of requests that were under way together count as one
        QDateTime counted;       // when the last one of these was
    };

    ServiceWatch(HttpClient& http, const Clock& clock) : http_(http), clock_(clock) {}

    QCoro::Task<HttpReply> get(Service service, QString path, std::stop_token stop) override;
    void complain(const Service& service, const QString& reason) override;

    State stateOf(const Service& service) const;
    // Time and again, so that it is no single miss.
    bool isFailing(const Service& service) const;

private:
    struct Watched {
        State state;
        std::optional<State> beforeAnswer;  // while a reader may still complain of the answer
    };

    void noteFailure(const Service& service, State& state, const QString& reason) const;

    HttpClient& http_;
    const Clock& clock_;
    QHash<QString, Watched> watched_;  // by purpose, kind and host
};

// In Chinese: 正常，应答 12 次，最近 10:02:03, or why it didn't the last time.
QString stateWords(const Service& service, const ServiceWatch::State& state);

}  // namespace guanchao
