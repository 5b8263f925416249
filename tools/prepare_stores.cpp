// prepare_stores FOLDER DATA: makes the stores that are missing in an application folder.
#include <QCoreApplication>
#include <QTextStream>

#include "store/prepared_stores.h"

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QTextStream errors(stderr);
    if (arguments.size() != 3) {
        errors << "usage: prepare_stores FOLDER DATA\n";
        return 2;
    }
    try {
        for (const QString& file :
             guanchao::prepareStores(arguments[1], arguments[2], QDateTime::currentDateTime())) {
            QTextStream(stdout) << "made " << file << '\n';
        }
    } catch (const std::exception& failure) {
        errors << failure.what() << '\n';
        return 1;
    }
    return 0;
}
