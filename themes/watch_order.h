// 自定义顺序: the own order of a list of the watchlist, table zixuanshunxu of the main store. A
// stock without a place stands behind the others; one that has left the list keeps its place for
// its return. Failed statements raise StoreError.
#pragma once

#include <QString>
#include <QStringList>

#include "store/stores.h"

namespace guanchao {

// For a store that has the tables of further lists.
bool hasOwnOrder(Connection& mainStore, const QString& list);

// Puts the stocks, in their order, before another one, behind all where that is empty. A list
// without an own order gets one from the stocks as they are shown.
void moveInList(const Stores& stores, const QString& list, const QStringList& shown,
                const QStringList& dms, const QString& before);

// The rule of it.
QStringList movedBefore(const QStringList& order, const QStringList& dms, const QString& before);

}  // namespace guanchao
