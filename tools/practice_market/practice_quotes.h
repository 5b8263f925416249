// The quotes of the practice market, as the public quote service words them: one line a code,
// made from the code, a seed and the clock alone, so that every run shows the same day. Prices in
// yuan, volumes in shares (Shanghai indexes and short lines: lots of 100), amounts in yuan (short
// lines: 10,000 yuan). Bad codes are answered as the service answers them, nothing is thrown.
#pragma once

#include <QDateTime>
#include <QHash>
#include <QString>
#include <QStringList>
#include <vector>

namespace guanchao {

struct TradingMoment;

struct PracticeStock {
    QString code;  // upper-case, with the exchange: SH600000
    QString name;
};

// How the prices of stocks move: as on a market's day, or so that alarms come within a minute.
enum class Pace { ordinary, lively };

class PracticeQuotes {
public:
    // The chief indexes are known without being listed.
    explicit PracticeQuotes(std::vector<PracticeStock> stocks, quint32 seed = 20261124,
                            Pace pace = Pace::ordinary);

    // Besides these the seed suspends about one stock in 150. Codes in either case.
    void suspend(const QString& code);
    bool isSuspended(const QString& code) const;

    // The reply to one code, with its line feed.
    QString line(const QString& lowerCaseCode, const QDateTime& now) const;

    // The lines of all codes in order. One malformed code spoils them all.
    QString reply(const QStringList& lowerCaseCodes, const QDateTime& now) const;

private:
    struct Security {
        QString name;
        bool suspended;
    };

    void add(const QString& lowerCaseCode, const QString& name);
    quint64 keyOf(const QString& lowerCaseCode) const;
    QString values(const QString& code, const QDateTime& now) const;

    quint32 seed_;
    Pace pace_;
    QHash<QString, Security> securities_;  //< by lower-case code
};

}  // namespace guanchao
