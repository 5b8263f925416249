// The tables that stand beside the watchlist zixuangu in the main store: zixuanzu and zixuanzugu,
// further lists and their stocks; zixuanshunxu, the own order of each list; gegubeizhu, the notes
// of stocks. A store of an earlier program has none of them before the first is written. A list is
// known by its name; the watchlist itself has the empty one. Failed statements raise StoreError.
#pragma once

#include <QString>
#include <QStringList>

#include "store/connection.h"

namespace guanchao {

inline const QString watchlistName = QStringLiteral("自选股");

// What users read for a list.
QString shownNameOf(const QString& list);

bool hasWatchTables(Connection& mainStore);
// Within the caller's transaction; nothing where they are there.
void makeWatchTables(Connection& mainStore);

// Whose rows the list has: the table, and the condition on its rows, " where …".
QString tableOf(const QString& list);
QString ofList(const QString& list);
// Behind `from …`, for a join that names the list's rows zixuangu.
QString membersOf(const QString& list);
QString andOfList(const QString& list);

bool isOnList(Connection& mainStore, const QString& list, const QString& dm);
void addToList(Connection& mainStore, const QString& list, const QString& dm, const QString& jc);

// The names of the further lists, as they were made.
QStringList furtherLists(Connection& mainStore);

// Within the caller's transaction. Blanks at the ends don't count; an empty text takes it away.
void writeNote(Connection& mainStore, const QString& dm, const QString& note);

}  // namespace guanchao
