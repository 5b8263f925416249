#include "exchange/import_on_copies.h"

#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

struct Copy {
    ImportedTable table;
    QString rows;  // that were there
};

// The words that the library keeps of how a table and its indexes were made, for the copies.
QString madeAsCopy(QString words) {
    return words.startsWith(u"CREATE TABLE"_s) ? words.replace(0, 12, u"create temp table"_s)
                                               : words.replace(u"INDEX "_s, u"INDEX temp."_s);
}

Copy makeCopy(Connection& store, const ImportedTable& table) {
    const QString made =
        u"select sql from main.sqlite_master where sql is not null and tbl_name='"_s + table.name +
        u"' and type='"_s;
    const Recordset tableWords(store, made + u"table'"_s);
    store.execute(madeAsCopy(tableWords.value(0).toText()));
    store.execute(u"insert into temp."_s + table.name + u" select * from main."_s + table.name);
    const Recordset rows(store, u"select count(*) from temp."_s + table.name);
    for (Recordset words(store, made + u"index'"_s); !words.atEnd(); words.moveNext()) {
        store.execute(madeAsCopy(words.value(0).toText()));
    }
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
        const int added = addRows(connection, steps);
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
