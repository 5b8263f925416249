// What a day of the book was against the days before it: the strongest and the weakest themes,
// those that have come to the front and those that have left it.
#pragma once

#include <QList>
#include <QString>
#include <optional>

#include "themes/day_book.h"

namespace guanchao {

// Themes of fewer stocks are not ranked: one stock would decide their mean.
inline constexpr int leastRankedMembers = 3;
inline constexpr int daysOfLine = 20;

enum class Standing : std::uint8_t { strongest, weakest, fresh, fading, other };

QString standingWords(Standing standing);

struct ReviewRow {
    Standing standing = Standing::other;
    BookedTheme day;
    int rank = 0;                      // from the best; 0: not ranked
    std::optional<double> gainBefore;  // percent, on the day before
    int rankBefore = 0;
    QList<double> line;  // gains, the newest last; NaN for a day without it
};

// How many of so many are the front: the first twenty, of fewer than a hundred a fifth.
int frontOf(int ranked);

// The groups one after the other, then all others by their gain. `before` are the days before it,
// newest first.
QList<ReviewRow> reviewOf(const BookDay& day, const QList<BookDay>& before);

}  // namespace guanchao
