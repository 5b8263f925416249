// practice_history CODES.csv THEMES.csv FOLDER: makes the practice market's history in the
// application folder, unless one is there, and gives its main store some report dates and
// forecasts. Exit codes: 0 done, 1 failed, 2 bad arguments.
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>
#include <stdexcept>

#include "platform/home_places.h"
#include "research/history_store.h"
#include "store/fresh_store.h"
#include "store/stores.h"
#include "tools/history_builder/theme_members.h"
#include "tools/practice_history/practice_history.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// A file that is there stays: it may be the user's own.
void putInPlace(const QString& made, const QString& path) {
    if (QFileInfo::exists(path)) {
        QFile::remove(made);
        return;
    }
    removeJournalOf(path);
    if (QFile::rename(made, path)) {
        QTextStream(stdout) << u"已生成 "_s << path << '\n';
    } else {
        throw std::runtime_error(QString(u"不能写入 "_s + path).toStdString());
    }
}

// Both are complete before the first comes to its place; a start that was cut short between the two
// is made good by the next one.
void makeHistory(const HistoryFiles& files, const PracticeQuotes& quotes,
                 const QList<ThemeMember>& library, const QDate& today) {
    if (QFileInfo::exists(files.first) && QFileInfo::exists(files.second)) {
        return;
    }
    const HistoryFiles made = {files.first + u".practice"_s, files.second + u".practice"_s};
    QFile::remove(made.first);
    QFile::remove(made.second);
    const PracticeHistory history = practiceHistory(quotes, library, today);
    addToHistory(made, history.days, history.themes);
    putInPlace(made.first, files.first);
    putInPlace(made.second, files.second);
}

void make(const QStringList& arguments) {
    const QString folder = applicationFolder(arguments[3]);
    if (!QDir().mkpath(folder + historyFolder)) {
        throw std::runtime_error(QString(u"不能建立 "_s + folder + historyFolder).toStdString());
    }
    const Stores stores = storesIn(folder);
    SkippedRows skipped;
    const QList<ThemeMember> library = readThemeMembers(arguments[2], skipped);
    const QDate today = QDate::currentDate();
    makeHistory({stores.firstHistory.path, stores.secondHistory.path},
                PracticeQuotes(readPracticeStocks(arguments[1])), library, today);
    Connection main = stores.main.open();
    addPracticeForecasts(main, library, today);
}

}  // namespace

}  // namespace guanchao

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4) {
        QTextStream(stderr) << QStringLiteral(
            "用法：practice_history 代码.csv 主题.csv 应用目录\n");
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
