// The day history of one code, from the CSV service (/table.csv). Prices in yuan or points, volume
// as the service gives it. A failed request and a reply that is no CSV give no day; nothing is
// raised.
#pragma once

#include <QDate>
#include <QList>
#include <QString>

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

    // One request for the days from the first to the last, oldest first. `dm` with its exchange:
    // SH600000.
    QList<HistoryDay> fetch(const QString& dm, const QDate& first, const QDate& last) const;

private:
    Http& http_;
    Service service_;
};

// The path and query of that request. Months are counted from 0.
QString dayHistoryPath(const QString& dm, const QDate& first, const QDate& last);

// The days of a reply, oldest first; none if it is shorter than a header and three lines, of which
// the last may be empty.
QList<HistoryDay> readDayHistory(const QString& reply);

}  // namespace guanchao
