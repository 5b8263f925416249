// Where the pages of a job come from: the site of a search engine, or the quote services in their
// order.
#pragma once

#include <QByteArray>
#include <QCoro/QCoroTask>
#include <QString>
#include <stop_token>

#include "platform/http_client.h"
#include "services/quote_source.h"

namespace guanchao {

struct Page {
    QByteArray body;
    QString lack;  // why there is none, in Chinese
};

class PageSource {
public:
    virtual ~PageSource() = default;

    // `way`: which of the services is asked. Raises nothing but Cancelled.
    virtual QCoro::Task<Page> get(int way, QString request, std::stop_token stop) = 0;
};

// A request is a path with its query; the page as the service sends it.
class WebPages : public PageSource {
public:
    WebPages(HttpClient& http, QList<Service> services)
        : http_(http), services_(std::move(services)) {}

    QCoro::Task<Page> get(int way, QString request, std::stop_token stop) override;

private:
    HttpClient& http_;
    QList<Service> services_;
};

// A request is a list of codes, as services/quote_source takes it; the page has the lines of
// services/quote_reply, in UTF-8.
class QuotePages : public PageSource {
public:
    explicit QuotePages(QuoteSource quotes) : quotes_(std::move(quotes)) {}

    QCoro::Task<Page> get(int way, QString request, std::stop_token stop) override;

private:
    QuoteSource quotes_;
};

}  // namespace guanchao
