// market_scale FOLDER: makes a main store at the size of the whole market in the folder.
#include <QCoreApplication>
#include <QTextStream>

#include "tools/market_scale/market_scale.h"

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) {
        QTextStream(stderr) << "usage: market_scale FOLDER\n";
        return 2;
    }
    try {
        guanchao::makeMarketScale(arguments[1], {});
    } catch (const std::exception& failure) {
        QTextStream(stderr) << failure.what() << '\n';
        return 1;
    }
    return 0;
}
