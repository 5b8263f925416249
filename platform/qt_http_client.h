// HttpClient by Qt Network. Requests to a service share its connections, six at once at most, and
// go through the system's proxy, but never to a loopback address.
#pragma once

#include <QNetworkAccessManager>

#include "platform/http_client.h"

namespace guanchao {

class QtHttpClient : public HttpClient {
public:
    QtHttpClient();

    QCoro::Task<HttpReply> get(Service service, QString path, std::stop_token stop) override;

private:
    QNetworkAccessManager manager_;
};

}  // namespace guanchao
