// prepare_stores FOLDER DATA [HOST]: makes the stores that are missing in an application folder,
// and, for a practice folder, leads its F10 and search pages to the practice market at HOST and
// gives it some days of internet counts.
#include <QCoreApplication>
#include <QTextStream>

#include "store/prepared_stores.h"
#include "tools/practice_folder/practice_folder.h"

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QTextStream errors(stderr);
    if (arguments.size() < 3 || arguments.size() > 4) {
        errors << "用法：prepare_stores 应用目录 数据目录 [网址]\n";
        return 2;
    }
    try {
        for (const QString& file :
             guanchao::prepareStores(arguments[1], arguments[2], QDateTime::currentDateTime())) {
            QTextStream(stdout) << "已生成 " << file << '\n';
        }
        if (arguments.size() == 4) {
            guanchao::leadPagesTo(arguments[1], arguments[3]);
            guanchao::fillPracticeCounts(arguments[1], arguments[2], QDateTime::currentDateTime());
        }
    } catch (const std::exception& failure) {
        errors << failure.what() << '\n';
        return 1;
    }
    return 0;
}
