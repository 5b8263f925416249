// 主题日记, the day book: each theme's gain, limit-ups and leaders at the close of a day, as the
// main window shows them, and the notes of the user on days. Tables zhutiriji and fupanbeizhu of
// the main store, which a store of an earlier program gets with the first row. Read from the quotes
// of dmb; failed statements raise StoreError.
#pragma once

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QStringList>
#include <optional>

#include "store/row_images.h"
#include "store/stores.h"

namespace guanchao {

// Notes stay for good, days of themes only so many: a year of trading.
inline constexpr int mostBookDays = 250;

struct BookedTheme {
    QString theme;
    double gain = 0;  // percent, the mean of its members
    int limitUps = 0;
    int members = 0;      // that the code table has
    QStringList leaders;  // codes of those that gained most, the first three
};

struct BookDay {
    QDate day;
    QDateTime asOf;       // when its quotes were taken
    bool isOver = false;  // they are those of the close
    QList<BookedTheme> themes;
};

// Of which day quotes are that were taken then, and whether they are those of its close. No holiday
// is known. Nothing if none were taken.
std::optional<BookDay> dayOfQuotes(const QDateTime& taken);

// The quotes that are stored now, as a day without a place in the book.
std::optional<BookDay> readDayNow(Connection& mainStore);

// For a worker: writes the day of the stored quotes, if it is over and they are newer than what is
// written of it, in one transaction. Not a day whose figures are all those of the one before, which
// was none of trading. Gives the day that was written.
std::optional<QDate> writeDay(const Stores& stores, const QDateTime& now);

// Newest first.
QList<QDate> bookDays(Connection& mainStore);
// So many of the days up to one, or of the newest; newest first.
QList<BookDay> readBook(Connection& mainStore, int most, const QDate& upTo = {});

QHash<QDate, QString> readDayNotes(Connection& mainStore);
// Blanks at the ends don't count; an empty text takes it away. In one transaction.
void writeDayNote(const StoreFile& mainStore, const QDate& day, const QString& note);

// False in a store of an earlier program, before the first day or note is written.
bool hasDayBook(Connection& mainStore);
// The days of a theme go with it to its new name; where a theme of that name has its own day, that
// stays. For a store that has the book.
void renameInDayBook(Connection& mainStore, const QString& theme, const QString& name);
// The days of these themes, for an edit of them.
RowScope daysOfThemes(const QStringList& themes);

}  // namespace guanchao
