// What the stock quote window asks the quote and chart services for, one code or chart at a time.
#pragma once

#include <QCoro/QCoroTask>
#include <QString>
#include <stop_token>

#include "market/quote_screen.h"
#include "platform/clock.h"
#include "platform/http_client.h"
#include "services/quote_reply.h"
#include "services/quote_source.h"
#include "services/services.h"

namespace guanchao {

// What is read, as the line of the window names it.
inline const QString chartWords = QStringLiteral("走势图");

inline const QString noConnection = QStringLiteral("请检查网络连接，行情服务器连接不上!");

// Instead of the figures of a code that the service doesn't know.
QString noData(const QString& name);

class QuoteDesk {
public:
    QuoteDesk(HttpClient& http, const Clock& clock, const Services& services, QuoteScreen& screen)
        : http_(http), services_(services), source_(http, clock, services), screen_(screen) {}

    // Of a code in lower case. Raises NotHad, and OperationError for a bad reply.
    QCoro::Task<QuoteRow> fetch(QString code, std::stop_token stop);

    QCoro::Task<> showChart(QuoteChart chart, QString path, std::stop_token stop);

private:
    HttpClient& http_;
    const Services& services_;
    QuoteSource source_;
    QuoteScreen& screen_;
};

}  // namespace guanchao
