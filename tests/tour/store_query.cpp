// store_query FILE STATEMENT: the rows that a statement gives on a store or backup file, a line a
// row, the values separated by tabs. The file's name tells which key opens it.
#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>

#include "store/recordset.h"
#include "store/stores.h"

namespace {

using guanchao::Recordset;

QString keyOf(const QString& path) {
    const guanchao::Stores stores = guanchao::storesIn({});
    const QString name = QFileInfo(path).baseName();
    if (name == QLatin1String("wenzhang")) {
        return stores.article.key;
    }
    if (name == QLatin1String("caijiqi")) {
        return stores.heat.key;
    }
    return name == QLatin1String("zhutibackup") ? stores.backupKey : stores.main.key;
}

void print(Recordset rows) {
    QTextStream out(stdout);
    for (; !rows.atEnd(); rows.moveNext()) {
        QStringList values;
        for (int field = 0; field < rows.fieldCount(); ++field) {
            values << rows.value(field).toText();
        }
        out << values.join(u'\t') << '\n';
    }
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        QTextStream(stderr) << "usage: store_query FILE STATEMENT\n";
        return 2;
    }
    try {
        guanchao::Connection connection(arguments[1], keyOf(arguments[1]));
        print(Recordset(connection, arguments[2]));
    } catch (const std::exception& failure) {
        QTextStream(stderr) << failure.what() << '\n';
        return 1;
    }
    return 0;
}
