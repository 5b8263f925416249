// market_scale FOLDER: makes a main store and both history databases at the size of the whole
// market in the folder, and the lists of codes and themes that a practice market of it serves.
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTextStream>

#include "platform/home_places.h"
#include "tools/market_scale/history_scale.h"
#include "tools/market_scale/market_scale.h"

namespace {

guanchao::StoreFile historyIn(const QString& folder, guanchao::HomePlace place) {
    return {QDir(folder).filePath(QFileInfo(guanchao::homePath(place)).fileName()), {}};
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) {
        QTextStream(stderr) << "usage: market_scale FOLDER\n";
        return 2;
    }
    try {
        using guanchao::HomePlace;
        guanchao::makeMarketScale(arguments[1], {});
        guanchao::writeMarketLists(arguments[1]);
        guanchao::makeHistoryScale(historyIn(arguments[1], HomePlace::firstHistory),
                                   historyIn(arguments[1], HomePlace::secondHistory), {}, true);
    } catch (const std::exception& failure) {
        QTextStream(stderr) << failure.what() << '\n';
        return 1;
    }
    return 0;
}
