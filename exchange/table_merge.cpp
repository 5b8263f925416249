#include "exchange/table_merge.h"

namespace guanchao {

int mergeTable(const TableMerge& merge, Connection& store, Connection& file, ExchangeRun& run) {
    int added = 0;
    Transaction transaction = longTransaction(store);
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
    transaction.commit();
    return added;
}

}  // namespace guanchao
