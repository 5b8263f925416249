// What the window of the day's review shows, read at once, and its table. Raises StoreError.
#pragma once

#include "grid/result_grid.h"
#include "themes/day_review.h"

namespace guanchao {

inline constexpr int reviewThemeColumn = 2;

struct ReviewData {
    QList<QDate> days;  // that can be chosen, newest first: of the book, of now, and with a note
    QHash<QDate, QString> notes;
    BookDay day;  // an invalid one if there is none
    bool isInBook = false;
    QDate dayBefore;  // the newest of them
    int daysBefore = 0;
    int front = 0;  // ranks
    QList<ReviewRow> rows;
    QHash<QString, QString> names;  // of the leaders
};

// Of the wanted day, or of the newest. Days that are not over, or not yet in the book, are counted
// from the stored quotes.
ReviewData readReview(const Stores& stores, const QDate& wanted);

// How the day stands, in a line.
QString reviewWords(const ReviewData& data);

// The rows of the standing, or of all.
void fillReview(ResultGrid& grid, const ReviewData& data, std::optional<Standing> only);

// What is told of the line of each theme.
QHash<QString, QString> lineNotes(const QList<ReviewRow>& rows);

// The next day behind `from`, and round from the newest, whose note holds the text; invalid if none
// does.
QDate nextNoteWith(const ReviewData& data, const QString& text, const QDate& from);

}  // namespace guanchao
