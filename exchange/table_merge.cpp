#include "exchange/table_merge.h"

namespace guanchao {

int mergeRows(const TableMerge& merge, Connection& store, Connection& file, ExchangeRun& run) {
    int added = 0;
    Recordset rows(file, merge.rows);
    run.expect(rows.count());
    for (; !rows.atEnd(); rows.moveNext()) {
        const bool present = !Recordset(store, merge.lookUp(rows)).atEnd();
        const QString insert = present ? QString() : merge.insert(rows);
        if (!insert.isEmpty()) {
            store.execute(insert);
            ++added;
        }
        run.rowDone();
    }
    return added;
}

int mergeTable(const TableMerge& merge, Connection& store, Connection& file, ExchangeRun& run) {
    Transaction transaction = longTransaction(store);
    const int added = mergeRows(merge, store, file, run);
    transaction.commit();
    return added;
}

}  // namespace guanchao
