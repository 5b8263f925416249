// The quotes of a day that is over, as the days of a history: one request for up to 99 codes.
#pragma once

#include <QCoro/QCoroTask>
#include <QDateTime>
#include <QList>
#include <QStringList>
#include <functional>
#include <optional>
#include <stop_token>

#include "services/quote_source.h"

namespace guanchao {

// Of one code, prices in yuan, volume in shares, turnover in yuan.
struct DayQuote {
    QString dm;
    QDateTime moment;
    double open = 0;
    double high = 0;
    double low = 0;
    double close = 0;
    double formerClose = 0;  // of an ex-dividend day as the exchange has lowered it
    double volume = 0;
    double turnover = 0;

    // False for one of before 15:00, and where the code wasn't traded.
    bool isOfClose() const;
};

class DayQuotes {
public:
    DayQuotes(HttpClient& http, const Clock& clock, const QList<Service>& services)
        : source_(http, clock, services) {}

    // Called with how many codes have been asked for.
    using Note = std::function<void(int asked)>;

    // Of the codes that the services tell something of that can be read.
    QCoro::Task<QList<DayQuote>> fetch(QStringList codes, Note note, std::stop_token stop);

private:
    QuoteSource source_;
};

}  // namespace guanchao
