#include "exchange/table_merge.h"

#include "base/activity.h"
#include "platform/pick_file.h"

namespace guanchao {

namespace {

int mergeTables(const StoreMerge& merge, const QString& path, ExchangeRun& run) {
    Activity activity(merge.activity);
    Connection store = merge.store.open();
    Connection file(path, merge.store.key);
    int added = 0;
    for (const auto& [table, rows] : merge.tables) {
        Transaction transaction = longTransaction(store);
        added += mergeRows(rows, store, file, run);
        transaction.commit();
        activity.wrote(table);
    }
    return added;
}

}  // namespace

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

QCoro::Task<> mergePickedFile(StoreMerge merge, Dialogs& dialogs, ExchangeRun& run,
                              std::stop_token stop) {
    const std::optional<QString> path =
        co_await pickFile(dialogs, merge.question, merge.fileName, stop);
    if (!path) {
        co_return;
    }
    int added = 0;
    if (run.run([&] { added = mergeTables(merge, *path, run); })) {
        dialogs.tell(merge.done + QString::number(added) + merge.unit);
    }
}

}  // namespace guanchao
