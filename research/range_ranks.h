// All themes over a range of days by what is stored of their members: a day's gain of a theme is
// the mean of its members that have a row, and counts on the days of the index SH000001. Gains in
// percent, sums of daily gains, not compounded. Nothing is asked for or written. Raises StoreError.
#pragma once

#include <QCoro/QCoroTask>
#include <QDate>
#include <QHash>
#include <QList>
#include <QString>
#include <functional>
#include <stop_token>

#include "store/stores.h"

namespace guanchao {

// Where the days stand: those that comparisons have downloaded into geguhq of the main store, or
// geguhq of the first history database, with the index in its own table there. The themes are those
// of the main store.
enum class RangeSource : std::uint8_t { downloaded, history };

struct RangeQuestion {
    RangeSource source = RangeSource::downloaded;
    QDate first;
    QDate last;
};

struct RankedTheme {
    QString name;
    double gain = 0;
    double market = 0;  // of the index on the theme's days
    int days = 0;       // on which a member has a row
    int members = 0;
    int membersWithRows = 0;
    QList<double> weeks;  // the gain of each week of the range, NaN if no day of it counts

    double difference() const { return gain - market; }
};

struct RangeRanks {
    int days = 0;               // of the index
    QList<QDate> weeks;         // their Mondays; a week over new year is one
    QList<RankedTheme> themes;  // the best gain first, equals by name
    int withoutRows = 0;        // themes that are not ranked: none of their members has a row
};

// `meanwhile` is called between small steps; what it raises ends the ranking.
RangeRanks rankThemes(const Stores& stores, const RangeQuestion& question,
                      const std::function<void()>& meanwhile);

// The same in a thread of its own.
QCoro::Task<RangeRanks> rankStored(Stores stores, RangeQuestion question, std::stop_token stop);

// The gain of each stock that has a row of the day there; none where there is no such store.
QHash<QString, double> gainsOfStocks(const Stores& stores, RangeSource source, const QDate& day);

}  // namespace guanchao
