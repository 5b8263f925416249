// HttpClient over another that notes what passes through it.
#pragma once

#include "platform/http_client.h"

namespace guanchao {

class NotedHttp : public HttpClient {
public:
    explicit NotedHttp(HttpClient& http) : http_(http) {}

    QCoro::Task<HttpReply> get(Service service, QString path, std::stop_token stop) override {
        const HttpReply reply = co_await http_.get(service, path, stop);
        milliseconds_ += reply.milliseconds;
        last_ = reply;
        co_return HttpReply(reply);
    }

    void complain(const Service& service, const QString& reason) override {
        http_.complain(service, reason);
    }

    void forget() {
        last_ = {};
        milliseconds_ = 0;
    }

    const HttpReply& last() const { return last_; }
    // That all requests took, without the pauses between them.
    qint64 milliseconds() const { return milliseconds_; }

private:
    HttpClient& http_;
    HttpReply last_;
    qint64 milliseconds_ = 0;
};

}  // namespace guanchao
