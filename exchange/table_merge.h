// How a table of a store takes the rows of an exported file: row by row, those that are missing are
// added, those that are there never change. Raises StoreError.
#pragma once

#include <functional>

#include "exchange/exchange_run.h"
#include "store/recordset.h"

namespace guanchao {

// The statements of one table's merge, by the row of the file. The texts of a row go into them as
// they are: an apostrophe makes the merge fail.
struct TableMerge {
    using Statement = std::function<QString(const Recordset& row)>;

    QString rows;      // run on the file
    Statement lookUp;  // run on the store: the row is missing if nothing comes back
    Statement insert;  // empty: the row is left out
};

// Gives the number of rows added. The caller has a transaction open.
int mergeRows(const TableMerge& merge, Connection& store, Connection& file, ExchangeRun& run);

// The same in a transaction of its own; an empty table has its transaction too.
int mergeTable(const TableMerge& merge, Connection& store, Connection& file, ExchangeRun& run);

}  // namespace guanchao
