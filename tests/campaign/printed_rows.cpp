// A line for each row of each store below the folder and the folders of the arguments: the store's
// path, the table, and what the row comes to. Stores must be whole.
#include <QCryptographicHash>
#include <QDirIterator>

#include "exchange/store_check.h"
#include "tests/campaign/job_desk.h"

namespace guanchao {

static void printTable(Connection& store, const QString& table) {
    QTextStream out(stdout);
    for (Recordset row(store, u"select * from "_s + table); !row.atEnd(); row.moveNext()) {
        QCryptographicHash hash(QCryptographicHash::Md5);
        for (int field = 0; field < row.fieldCount(); ++field) {
            hash.addData(row.value(field).toText().toUtf8().append('\0'));
        }
        out << store.path() << '\t' << table << '\t'
            << QString::fromLatin1(hash.result().toHex().left(16)) << '\n';
    }
    out << store.path() << '\t' << table << "\t\n";
}

static void printStore(const StoreFile& file) {
    requireWhole(file);
    Connection store = file.open();
    for (Recordset table(store, u"select name from sqlite_master where type='table'"_s);
         !table.atEnd(); table.moveNext()) {
        printTable(store, table.value(0).toText());
    }
}

void printRows(JobDesk& it) {
    const std::map<QString, QString> keys = {{u"dzhzhuti"_s, {}},
                                             {u"wenzhang"_s, it.stores.article.key},
                                             {u"caijiqi"_s, it.stores.heat.key},
                                             {u"zhutibackup"_s, it.stores.backupKey}};
    for (const QString& folder : QStringList{it.folder} + it.arguments) {
        QDirIterator files(folder, {u"*.mzdat"_s, u"*.ztb"_s}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            const auto key = keys.find(QFileInfo(path).baseName());
            if (key != keys.end() && !path.contains(u".new/"_s)) {
                printStore({path, key->second});
            }
        }
    }
}

}  // namespace guanchao
