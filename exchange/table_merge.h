// One table of an exported store merged into the program's own: rows that are missing are added,
// rows that are there never change. Raises StoreError.
#pragma once

#include <QString>

#include "exchange/exchange_run.h"
#include "store/recordset.h"

namespace guanchao {

// How a table of the file is read, how a row is looked up and how it is added. The texts of a row
// go into the statements as they are: an apostrophe makes the merge fail.
struct TableMerge {
    QString rows;
    QString (*lookUp)(const Recordset& row);
    QString (*insert)(const Recordset& row);  // empty: the row is left out
};

// Gives the number of rows added, all in one transaction; an empty table has its transaction too.
int mergeTable(const TableMerge& merge, Connection& store, Connection& file, ExchangeRun& run);

}  // namespace guanchao
