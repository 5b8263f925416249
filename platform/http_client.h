// Awaitable GET requests to the services of the web.
#pragma once

#include <QByteArray>
#include <QCoro/QCoroTask>
#include <QDateTime>
#include <QString>
#include <stop_token>

#include "platform/service.h"

namespace guanchao {

struct HttpReply {
    enum class Outcome {
        answered,
        notThere,     // nobody was asked: services.ini names no host
        unreachable,  // no host of that name, no connection
        refused,      // status 400 and above
        silent,       // not done within the time-out of the service
        broken,       // the transfer broke off
        limited,      // refused for having been asked too much
        resting,      // not asked: it was limited or failed time and again a moment ago
    };

    Outcome outcome = Outcome::notThere;
    int status = 0;        // of the answer or refusal
    QByteArray body;       // as it came, of a refusal too; empty otherwise
    QDateTime until = {};  // of a rest
    // Of one that is unreachable, in the toolkit's words; why one rests, in Chinese.
    QString reason = {};
    qint64 milliseconds = 0;  // from the request to its end

    bool answered() const { return outcome == Outcome::answered; }
    // The service has answered that it doesn't have the page.
    bool hasNoPage() const {
        constexpr int notFound = 404;
        return outcome == Outcome::refused && status == notFound;
    }
    // The service may be asked too much.
    bool turnedAway() const {
        return outcome == Outcome::refused || outcome == Outcome::limited ||
               outcome == Outcome::resting;
    }
};

// Why there is no answer, in Chinese: "没有应答".
QString failureWords(const HttpReply& reply);

class HttpClient {
public:
    virtual ~HttpClient() = default;

    // Raises nothing but Cancelled, once the stop is requested. The time-out of the service is that
    // of the whole request.
    virtual QCoro::Task<HttpReply> get(Service service, QString path, std::stop_token stop) = 0;

    // Whoever reads an answer says at once, before the next request, that it is none: `reason` in
    // Chinese.
    virtual void complain(const Service& /*service*/, const QString& /*reason*/) {}
};

}  // namespace guanchao
