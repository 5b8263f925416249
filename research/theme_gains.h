// What a theme has gained over its last days, by what is stored of its members: a day's gain is the
// mean of those that have a row, as in the ranks of all themes; the days are those of the index
// SH000001. Gains in percent, sums of daily gains, not compounded. Tables dzhzhuti of the main
// store, geguhq and the index of the first history database where it has rows of a member, else
// geguhq of the main store. Nothing is asked for. Raises StoreError.
#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <limits>

#include "research/range_ranks.h"
#include "store/stores.h"

namespace guanchao {

inline constexpr int gainSpans[] = {5, 20, 60};

struct SpanGain {
    int days = 0;
    int daysWithRows = 0;
    double gain = std::numeric_limits<double>::quiet_NaN();  // while so many days are not stored
};

struct ThemeGains {
    RangeSource source = RangeSource::downloaded;
    QDate last;          // of the days that count; none without days
    int marketDays = 0;  // that are stored, up to the longest span
    int members = 0;
    int membersWithRows = 0;
    QList<SpanGain> spans;
};

ThemeGains readThemeGains(const Stores& stores, const QString& theme);

// Where the gains come from and what they lack, in a line; `today` tells whether they are old.
QString sourceWords(const ThemeGains& gains, const QDate& today);

}  // namespace guanchao
