// What the program itself has been told of the day's prices, of every stock, whoever asked: the
// update of all stocks, the monitors and the quote window. Held in memory, a price a minute of a
// stock, until prices of a new day come; a whole market that is asked for every minute of a day
// takes about 23 MB.
#pragma once

#include <QHash>
#include <QObject>

#include "base/day_line.h"
#include "services/quote_reply.h"

namespace guanchao {

class PolledDay : public QObject {
    Q_OBJECT

public:
    // A quote as it was read, of a row with its code or of that code. What tells no price of a
    // minute of the newest day is passed over.
    void note(const QuoteRow& row) { note(row.dm(), row); }
    void note(const QString& dm, const QuoteRow& row);

    // `dm` in upper case; without points where the stock has not been asked for today.
    DayLine of(const QString& dm) const;

signals:
    void noted(const QString& dm);

private:
    struct Series {
        double formerClose = 0;
        QList<DayPoint> points;
    };

    QDate day_;
    QHash<QString, Series> stocks_;
};

}  // namespace guanchao
