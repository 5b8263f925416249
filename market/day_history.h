// The day history of one code, from the CSV service (/table.csv). Prices in yuan or points, volume
// as the service gives it. A failed request and a reply that is no CSV are told from one without
// days; nothing is raised but Cancelled.
#pragma once

#include <QCoro/QCoroTask>
#include <QDate>
#include <QList>
#include <QString>
#include <optional>
#include <stop_token>

#include "platform/http_client.h"

namespace guanchao {

struct HistoryDay {
    QDate day;
    double open = 0;
    double high = 0;
    double low = 0;
    double close = 0;
    double volume = 0;
    QString closeText;  // as the service wrote it
};

// What the service has said.
struct HistoryReply {
    std::optional<QList<HistoryDay>> days;  // oldest first; nothing if it didn't answer
    bool refused = false;                   // it may have been asked too much
};

class DayHistory {
public:
    DayHistory(HttpClient& http, const Service& service) : http_(http), service_(service) {}

    // How many requests may be on their way at once.
    int ahead() const { return service_.ahead; }

    // One request for the days from the first to the last. `dm` with its exchange: SH600000.
    QCoro::Task<HistoryReply> fetch(QString dm, QDate first, QDate last,
                                    std::stop_token stop) const;

private:
    HttpClient& http_;
    Service service_;
};

// The path and query of that request. Months are counted from 0.
QString dayHistoryPath(const QString& dm, const QDate& first, const QDate& last);

// The days of a reply, oldest first; none if it is shorter than a header and three lines, of which
// the last may be empty. Nothing if it is no CSV.
std::optional<QList<HistoryDay>> readDayHistory(const QString& reply);

}  // namespace guanchao
