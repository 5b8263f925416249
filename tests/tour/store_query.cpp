// store_query FILE STATEMENT: the rows that a statement gives on a store or backup file, a line a
// row, the values separated by tabs. The file's name tells which key opens it.
#include <QCoreApplication>
#include <QFileInfo>
#include <QMap>
#include <QTextStream>

#include "store/recordset.h"
#include "store/stores.h"

using namespace guanchao;

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const Stores stores = storesIn({});
    const QMap<QString, QString> keys = {
        {QStringLiteral("wenzhang"), stores.article.key},
        {QStringLiteral("caijiqi"), stores.heat.key},
        {QStringLiteral("py"), stores.pinyin.key},
        {QStringLiteral("yzhutibackup"), stores.backupTemplate.key},
        {QStringLiteral("zhutibackup"), stores.backupKey}};
    QTextStream out(stdout);
    try {
        const QString path = arguments.value(1);
        Connection connection(path, keys.value(QFileInfo(path).baseName(), stores.main.key));
        for (Recordset rows(connection, arguments.value(2)); !rows.atEnd(); rows.moveNext()) {
            QStringList values;
            for (int field = 0; field < rows.fieldCount(); ++field) {
                values << rows.value(field).toText();
            }
            out << values.join(u'\t') << '\n';
        }
    } catch (const std::exception& failure) {
        QTextStream(stderr) << failure.what() << '\n';
        return 1;
    }
    return 0;
}
