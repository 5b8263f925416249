// The quotes of the practice market, as the public quote service words them: one line a code,
// made from the code, a seed and the clock alone, so that every run shows the same day. Prices in
// yuan, volumes in shares (Shanghai indexes and short lines: lots of 100), amounts in yuan (short
// lines: 10,000 yuan). Bad codes are answered as the service answers them, nothing is thrown.
#pragma once

#include <QDate>
#include <QDateTime>
#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "tools/practice_market/practice_walk.h"

namespace guanchao {

struct PracticeStock {
    QString code;  // upper-case, with the exchange: SH600000
    QString name;
};

// The stocks of CODES.csv. Raises std::runtime_error.
std::vector<PracticeStock> readPracticeStocks(const QString& path);

// How the prices of stocks move: as on a market's day, or so that alarms come within a minute.
enum class Pace { ordinary, lively };

// A day that has ended.
struct PracticeDay {
    QDate day;
    double formerClose = 0;
    double open = 0;
    double high = 0;
    double low = 0;
    double close = 0;
    qint64 shares = 0;
    double amount = 0;
};

// The day so far, a price a minute; of a suspended stock the former close alone.
struct PracticeMinutes {
    double formerClose = 0;
    std::vector<double> prices;
};

class PracticeQuotes {
public:
    // The chief indexes are known without being listed.
    explicit PracticeQuotes(std::vector<PracticeStock> stocks, Pace pace = Pace::ordinary);

    // Besides these the seed suspends about one stock in 150. Codes in either case.
    void suspend(const QString& code);
    bool isSuspended(const QString& code) const;

    // The reply to one code, with its line feed.
    QString line(const QString& lowerCaseCode, const QDateTime& now) const;

    // The lines of all codes in order. One malformed code spoils them all.
    QString reply(const QStringList& lowerCaseCodes, const QDateTime& now) const;

    // The days that have ended at `now`, from the first to the last, oldest first; none for an
    // unknown code. Of whole lots, unadjusted: see practice_events. They lead up to the former
    // close that a quote shows.
    std::vector<PracticeDay> days(const QString& lowerCaseCode, const QDate& first,
                                  const QDate& last, const QDateTime& now) const;

    // With which the services word its prices.
    int priceDecimals(const QString& lowerCaseCode) const;

    // Empty and nothing for an unknown code; the indexes of other countries are known to the
    // second.
    QString name(const QString& lowerCaseCode) const;
    std::optional<PracticeMinutes> minutes(const QString& lowerCaseCode,
                                           const QDateTime& now) const;

    // A number from 0 up to 1 that follows from the code and the index alone.
    double numberOf(const QString& lowerCaseCode, quint64 index) const;

private:
    struct Security {
        QString name;
        bool suspended;
    };

    void add(const QString& lowerCaseCode, const QString& name);
    quint64 keyOf(const QString& lowerCaseCode) const { return walkKey(lowerCaseCode, seed); }
    QString values(const QString& code, const QDateTime& now) const;

    static constexpr quint32 seed = 20261124;

    Pace pace_;
    QHash<QString, Security> securities_;  // by lower-case code
};

}  // namespace guanchao
