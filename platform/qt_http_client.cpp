#include "platform/qt_http_client.h"

#include <QElapsedTimer>
#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QTimer>
#include <chrono>
#include <memory>

#include "base/later.h"

namespace guanchao {

namespace {

constexpr int mostRedirections = 10;
constexpr int firstRefusal = 400;

class SystemProxies : public QNetworkProxyFactory {
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override {
        if (isOnThisComputer(query.peerHostName())) {
            return {QNetworkProxy::NoProxy};
        }
        return systemProxyForQuery(query);
    }
};

QNetworkRequest requestFor(const Service& service, const QString& path) {
    QNetworkRequest request(QUrl(service.host + path));
    request.setMaximumRedirectsAllowed(mostRedirections);
    if (!service.referer.isEmpty()) {
        request.setRawHeader("Referer", service.referer.toUtf8());
    }
    return request;
}

HttpReply::Outcome outcomeOf(const QNetworkReply& reply, int status) {
    if (status >= firstRefusal) {
        return HttpReply::Outcome::refused;
    }
    if (reply.error() == QNetworkReply::NoError) {
        return HttpReply::Outcome::answered;
    }
    const bool begun = status > 0 && reply.error() == QNetworkReply::RemoteHostClosedError;
    return begun ? HttpReply::Outcome::broken : HttpReply::Outcome::unreachable;
}

HttpReply readReply(QNetworkReply& reply) {
    HttpReply result;
    result.status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    result.outcome = outcomeOf(reply, result.status);
    if (result.outcome == HttpReply::Outcome::unreachable) {
        result.reason = reply.errorString();
    }
    if (result.status >= firstRefusal || result.answered()) {
        result.body = reply.readAll();
    }
    return result;
}

// Breaks off what is still under way.
struct EndReply {
    void operator()(QNetworkReply* reply) const {
        reply->abort();
        reply->deleteLater();
    }
};

}  // namespace

QtHttpClient::QtHttpClient() {
    manager_.setProxyFactory(new SystemProxies);
}

QCoro::Task<HttpReply> QtHttpClient::get(Service service, QString path, std::stop_token stop) {
    endIfStopped(stop);
    if (service.host.isEmpty()) {
        co_return HttpReply();
    }
    QElapsedTimer timer;
    timer.start();
    const std::unique_ptr<QNetworkReply, EndReply> reply(manager_.get(requestFor(service, path)));
    // Shared, since the time-out may outlive the request.
    const auto inTime = std::make_shared<Later<bool>>();
    QObject::connect(reply.get(), &QNetworkReply::finished, reply.get(),
                     [inTime] { inTime->deliver(true); });
    if (service.timeoutSeconds > 0) {
        QTimer::singleShot(std::chrono::seconds(service.timeoutSeconds), reply.get(),
                           [inTime] { inTime->deliver(false); });
    }
    const bool ended = co_await inTime->orStop(stop);
    HttpReply result;
    result.outcome = HttpReply::Outcome::silent;
    if (ended) {
        result = readReply(*reply);
    }
    result.milliseconds = timer.elapsed();
    co_return HttpReply(result);
}

}  // namespace guanchao
