// The day history of one code, from the CSV service (/table.csv). Prices in yuan or points, volume
// as the service gives it. A failed request and a reply that is no CSV are told from one without
// days; nothing is raised.
#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <optional>

#include "platform/http.h"

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

class DayHistory {
public:
    DayHistory(Http& http, const Service& service) : http_(http), service_(service) {}

    // One request for the days from the first to the last, oldest first; nothing if the service
    // didn't answer. `dm` with its exchange: SH600000.
    std::optional<QList<HistoryDay>> fetch(const QString& dm, const QDate& first,
                                           const QDate& last) const;

private:
    Http& http_;
    Service service_;
};

// The path and query of that request. Months are counted from 0.
QString dayHistoryPath(const QString& dm, const QDate& first, const QDate& last);

// The days of a reply, oldest first; none if it is shorter than a header and three lines, of which
// the last may be empty. Nothing if it is no CSV.
std::optional<QList<HistoryDay>> readDayHistory(const QString& reply);

}  // namespace guanchao
