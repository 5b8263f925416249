// What a kind of day-history service is: which requests bring the days, and how a reply is read.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

namespace guanchao {

// A day of one code, unadjusted.
struct DayBar {
    QDate day;
    double open = 0;  // prices in yuan or points
    double high = 0;
    double low = 0;
    double close = 0;
    double volume = 0;               // in shares
    std::optional<double> turnover;  // in yuan; not every kind has it
    QString closeText;               // as the service wrote it
};

// What is asked for.
struct BarRange {
    QString dm;  // with its exchange: SH600000
    QDate first;
    QDate last;
    QDateTime now;  // of the asking
};

// The days of one reply, oldest first, or why it is none, in Chinese.
struct ReadBars {
    QList<DayBar> bars;
    QString fault;
};

// The fault of a reply that is another page.
inline const QString noBars = QStringLiteral("应答里没有日线");

class BarKind {
public:
    virtual ~BarKind() = default;

    // Of the requests that together bring the days, in the order of these.
    virtual QStringList paths(const BarRange& range) const = 0;

    // A reply without days, as for a code that the service doesn't know, is one.
    virtual ReadBars read(const QByteArray& body, const QString& dm) const = 0;

    // Whether what was read must pass services/bar_check, which a lenient kind can't.
    virtual bool isChecked() const { return true; }
};

// By the name that services.ini gives it; csv for one that it doesn't name.
std::unique_ptr<BarKind> barKind(const QString& name);

}  // namespace guanchao
