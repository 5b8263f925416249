#include "exchange/table_merge.h"

#include "base/activity.h"
#include "exchange/import_on_copies.h"
#include "exchange/picked_store.h"
#include "platform/pick_file.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QList<TableMerge> tablesOf(const StoreMerge& merge) {
    QList<TableMerge> tables;
    for (const auto& [words, table] : merge.tables) {
        tables << table;
    }
    return tables;
}

int mergeTables(const StoreMerge& merge, const QString& path, Activity& activity,
                ExchangeWork& work) {
    Connection store = merge.store.open();
    Connection file(path, merge.store.key);
    ExchangeSteps steps(work);
    steps.expect(rowsOf(tablesOf(merge), file));
    int added = 0;
    for (const auto& [words, table] : merge.tables) {
        Transaction transaction = longTransaction(store);
        if (!table.index.isEmpty()) {
            store.execute(u"create index if not exists "_s + table.index);
        }
        added += mergeRows(table, store, file, steps);
        transaction.commit();
        activity.wrote(words);
    }
    return added;
}

// The words of `statement`, or its refusal with the place of the row.
QString wordsFor(const Recordset& rows, const TableMerge::Statement& statement, int number,
                 const Connection& file) {
    try {
        return statement(rows);
    } catch (const OperationError& refusal) {
        throw OperationError(u"文件 "_s + file.path() + u" 的第 "_s + QString::number(number) +
                             u" 行，"_s + refusal.reason());
    }
}

}  // namespace

int mergeRows(const TableMerge& merge, Connection& store, Connection& file, ExchangeSteps& steps) {
    int added = 0;
    int number = 0;
    Recordset rows(file, merge.rows);
    for (; !rows.atEnd(); rows.moveNext()) {
        ++number;
        const bool present = !Recordset(store, merge.lookUp(rows)).atEnd();
        const QString insert = present ? QString() : wordsFor(rows, merge.insert, number, file);
        if (!insert.isEmpty()) {
            store.execute(insert);
            if (merge.beside) {
                merge.beside(store, file, rows);
            }
            ++added;
        }
        steps.stepDone();
    }
    return added;
}

// A table that can't be read is told when its turn comes.
int rowsOf(const QList<TableMerge>& merges, Connection& file) {
    int rows = 0;
    for (const TableMerge& merge : merges) {
        try {
            const Recordset count(file, u"select count(*) from ("_s + merge.rows + u')');
            rows += static_cast<int>(count.value(0).toInteger());
        } catch (const StoreError&) {
            continue;
        }
    }
    return rows;
}

QCoro::Task<> mergePickedFile(StoreMerge merge, Dialogs& dialogs, ExchangeRun& run,
                              std::stop_token stop) {
    const std::optional<QString> path =
        co_await pickFile(dialogs, merge.question, merge.fileName, stop);
    if (!path) {
        co_return;
    }
    const auto job = [merge, path = *path](ExchangeWork& work) {
        Activity activity(merge.activity);
        return PickedStore{path, merge.kind, merge.fileName}.read(
            [&] { return mergeTables(merge, path, activity, work); });
    };
    const std::optional<int> added = co_await run.run(merge.activity, job, stop);
    dialogs.tell(added ? merge.done + QString::number(*added) + merge.unit : merge.stopped);
}

}  // namespace guanchao
