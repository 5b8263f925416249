// Quotes, from the services of services.ini in their order: the next one is asked where one
// refuses, is silent or sends another page, and for the codes that a reply leaves out or breaks off
// at. Nothing is raised but Cancelled.
#pragma once

#include <QCoro/QCoroTask>
#include <QDateTime>
#include <QHash>
#include <QList>
#include <QString>
#include <functional>
#include <stop_token>

#include "platform/clock.h"
#include "platform/http_client.h"
#include "services/services.h"

namespace guanchao {

inline constexpr int codesPerRequest = 99;

// The list to ask by for several lines, each code with a comma behind it. A lone code is asked for
// together with an index: a service cuts the reply to one code otherwise, and a monitor that never
// gets a quote could never fire.
QString withCompanion(const QString& list);

struct QuotesReply {
    QString lines;            // for services/quote_reply
    QString lack;             // why there are none, in Chinese: the reason of the first service
    bool turnedAway = false;  // the first one may have been asked too much
};

class QuoteSource {
public:
    QuoteSource(HttpClient& http, const Clock& clock, QList<Service> services);
    // Asks the quote services as they are at each request; doesn't outlive them.
    QuoteSource(HttpClient& http, const Clock& clock, const Services& services);

    // How many requests may be on their way at once.
    qsizetype ahead() const { return services_().value(0).ahead; }

    // `codes` in lower case, with commas between them and maybe one behind the last.
    QCoro::Task<QuotesReply> fetch(QString codes, std::stop_token stop);

private:
    QCoro::Task<QuotesReply> ask(Service service, QString codes, std::stop_token stop) const;
    QList<Service> inOrder() const;
    bool isLast(const Service& service) const;

    HttpClient& http_;
    const Clock& clock_;
    std::function<QList<Service>()> services_;
    // A service that brings nothing is asked last for a while, so that its silence is waited for
    // once and not with each request.
    QHash<QString, QDateTime> lastUntil_;  // by host
};

}  // namespace guanchao
