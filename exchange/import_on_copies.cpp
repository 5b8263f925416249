#include "exchange/import_on_copies.h"

#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

struct Copy {
    ImportedTable table;
    QString rows;  // that were there
};

// With an index over what the import reads.
Copy makeCopy(Connection& store, const ImportedTable& table) {
    const auto& [name, columns] = table;
    const QString tableAsMade = u"CREATE TABLE "_s;
    const Recordset words(
        store, u"select sql from main.sqlite_master where type='table' and name="_s + quoted(name));
    store.execute(words.value(0).toText().replace(0, tableAsMade.size(), u"create temp table "_s));
    store.execute(u"insert into temp."_s + name + u" select * from main."_s + name);
    store.execute(u"create index temp.copy_"_s + name + u" on "_s + name + u" ("_s + columns +
                  u')');
    const Recordset rows(store, u"select count(*) from temp."_s + name);
    return {table, rows.value(0).toText()};
}

bool isAsCopied(Connection& store, const Copy& copy) {
    const auto [name, columns] = copy.table;
    const Recordset same(store, u"select (select count(*) from main."_s + name + u")="_s +
                                    copy.rows + u" and not exists (select "_s + columns +
                                    u" from main."_s + name + u" except select "_s + columns +
                                    u" from temp."_s + name + u" where rowid<="_s + copy.rows +
                                    u')');
    return same.value(0).toInteger() == 1;
}

// False if others have written to the tables.
bool writeAdded(Connection& store, const QList<Copy>& copies, const ExchangeSteps& steps) {
    Transaction transaction = longTransaction(store);
    for (const Copy& copy : copies) {
        if (!isAsCopied(store, copy)) {
            return false;
        }
    }
    for (const Copy& copy : copies) {
        store.execute(u"insert into main."_s + copy.table.name + u" select * from temp."_s +
                          copy.table.name + u" where rowid>"_s + copy.rows + u" order by rowid"_s,
                      [&steps] { steps.endIfStopped(); });
    }
    steps.endIfStopped();
    transaction.commit();
    return true;
}

}  // namespace

int importOnCopies(const StoreFile& store, const QList<ImportedTable>& tables,
                   const AddRows& addRows, ExchangeWork& work) {
    for (;;) {
        Connection connection = store.open();
        ExchangeSteps steps(work);
        QList<Copy> copies;
        for (const ImportedTable& table : tables) {
            copies << makeCopy(connection, table);
        }
        // It writes to the copies only, and so locks nothing of the store.
        connection.execute(u"begin"_s);
        const int added = addRows(connection, steps);
        connection.execute(u"commit"_s);
        if (writeAdded(connection, copies, steps)) {
            return added;
        }
    }
}

Transaction longTransaction(Connection& connection) {
    connection.execute(u"pragma cache_spill=off"_s);
    return Transaction(connection);
}

}  // namespace guanchao
