// An import that leaves its store free for others while it works: it fills copies of the tables,
// and what it has added to them is written at once.
#pragma once

#include <QList>
#include <QString>
#include <functional>

#include "exchange/exchange_run.h"
#include "store/stores.h"

namespace guanchao {

struct ImportedTable {
    QString name;
    QString columns;  // what the import reads of the rows that are there
};

// Adds rows, by statements on a connection on which the names of the tables mean their copies, and
// gives how many are new.
using AddRows = std::function<int(Connection& copies, ExchangeSteps& steps)>;

// Gives what `addRows` gives. It is called again if the rows that were there have changed
// meanwhile. Raises StoreError, and ends by Cancelled; nothing is then written.
int importOnCopies(const StoreFile& store, const QList<ImportedTable>& tables,
                   const AddRows& addRows, ExchangeWork& work);

// A transaction whose rows are kept in memory until its end: a full cache would be written early,
// under a lock that keeps readers out.
Transaction longTransaction(Connection& connection);

}  // namespace guanchao
