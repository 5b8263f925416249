// practice_history CODES.csv THEMES.csv FOLDER: makes the practice market's history where the
// program looks for it, unless a history is there, and gives the main store of the application
// folder some report dates and forecasts. Exit codes: 0 done, 1 failed, 2 bad arguments.
#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>

#include "store/seed_list.h"
#include "store/stores.h"
#include "tools/history_builder/history_builder.h"
#include "tools/practice_history/practice_history.h"

namespace guanchao {

namespace {

PracticeQuotes quotesFor(const QString& codesFile) {
    std::vector<PracticeStock> stocks;
    for (const QStringList& row : readSeedList(codesFile)) {
        stocks.push_back({row[0], row[1]});
    }
    return PracticeQuotes(stocks);
}

void makeHistory(const HistoryFiles& files, const PracticeQuotes& quotes,
                 const QList<ThemeMember>& library, const QDate& today) {
    if (QFileInfo::exists(files.first) || QFileInfo::exists(files.second)) {
        return;
    }
    const PracticeHistory history = practiceHistory(quotes, library, today);
    addToHistory(files, history.days, history.themes);
    QTextStream(stdout) << "made " << files.first << " and " << files.second << '\n';
}

void make(const QStringList& arguments) {
    const Stores stores = storesIn(applicationFolder(arguments[3]));
    const QList<ThemeMember> library = readThemeMembers(arguments[2]);
    const QDate today = QDate::currentDate();
    makeHistory({stores.firstHistory.path, stores.secondHistory.path}, quotesFor(arguments[1]),
                library, today);
    Connection main = stores.main.open();
    addPracticeForecasts(main, library, today);
}

}  // namespace

}  // namespace guanchao

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4) {
        QTextStream(stderr) << "usage: practice_history CODES.csv THEMES.csv FOLDER\n";
        return 2;
    }
    try {
        guanchao::make(arguments);
    } catch (const std::exception& failure) {
        QTextStream(stderr) << failure.what() << '\n';
        return 1;
    }
    return 0;
}
