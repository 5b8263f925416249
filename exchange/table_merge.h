// How a table of a store takes the rows of an exported file: row by row, those that are missing are
// added, those that are there never change. Raises StoreError.
#pragma once

#include <QList>
#include <functional>
#include <utility>

#include "exchange/exchange_run.h"
#include "platform/dialogs.h"
#include "store/recordset.h"
#include "store/stores.h"

namespace guanchao {

// The statements of one table's merge, by the row of the file. A row that they refuse by an
// OperationError ends the merge, which tells the file and the row.
struct TableMerge {
    using Statement = std::function<QString(const Recordset& row)>;

    QString rows;        // run on the file
    Statement lookUp;    // run on the store: the row is missing if nothing comes back
    Statement insert;    // empty: the row is left out
    QString index = {};  // what the look-up goes by; made in the store where it is missing
    // Brings along what the file keeps of an added row in another table.
    std::function<void(Connection& store, Connection& file, const Recordset& row)> beside = {};
};

// Gives the number of rows added. The caller has a transaction open, or the rows go into copies.
int mergeRows(const TableMerge& merge, Connection& store, Connection& file, ExchangeSteps& steps);

// How many rows of the file they go through.
int rowsOf(const QList<TableMerge>& merges, Connection& file);

// The merge of a whole exported store, and what is said of it.
struct StoreMerge {
    QString activity;  // "导入文章"
    QString question;  // the title of the file dialog
    QString kind;      // of the file
    QString fileName;
    StoreFile store;
    QList<std::pair<QString, TableMerge>> tables;  // by what they hold
    QString done;                                  // before the number of rows that are new
    QString unit;                                  // behind it
    QString stopped;                               // what a stop leaves
};

// Asks for the file, merges it, each table in a transaction of its own, and tells how many rows are
// new, or that the user has stopped it. The tables before a stop or a failure stay merged.
QCoro::Task<> mergePickedFile(StoreMerge merge, Dialogs& dialogs, ExchangeRun& run,
                              std::stop_token stop);

}  // namespace guanchao
