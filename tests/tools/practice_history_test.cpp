#include "tools/practice_history/practice_history.h"

#include <QDir>
#include <QScopeGuard>
#include <QTemporaryDir>

#include "platform/home_places.h"
#include "research/history_store.h"
#include "research/practice_bars.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

// Where a folder of real stores would take them for real: moved, and told. Where they belong, and
// real days: left.
TEST(PracticeHistoryTest, PracticeBarsAmongRealOnesAreMovedAside) {
    const QTemporaryDir home;
    const QByteArray former = qgetenv("HOME");
    qputenv("HOME", home.path().toUtf8());
    const auto restoreHome = qScopeGuard([&] { qputenv("HOME", former); });
    const QString practice = applicationFolder(home.filePath(u"practice"_s));
    ASSERT_TRUE(QDir().mkpath(practice + historyFolder));
    const Stores live = storesIn(applicationFolder(home.filePath(u"live"_s)));
    const HistoryFiles files{live.firstHistory.path, live.secondHistory.path};
    QList<DayRow> days = practiceHistory(PracticeQuotes({}), {}, QDate(2026, 11, 24)).days;
    addToHistory(files, days, {});

    EXPECT_NE(storesIn(practice).firstHistory.path, files.first);
    EXPECT_TRUE(movePracticeBarsAside(storesIn(practice)).isEmpty());
    for (const QString& aside : {u".练习"_s, u".练习2"_s}) {
        addToHistory(files, days, {});
        const QString words = movePracticeBarsAside(live);
        for (const QString& path : {files.first, files.second}) {
            EXPECT_TRUE(words.contains(path + aside)) << words.toStdString();
            EXPECT_TRUE(QFile::exists(path + aside) && !QFile::exists(path));
        }
    }
    for (DayRow& row : days) {
        row.factor = 1;
    }
    addToHistory(files, days, {});
    EXPECT_TRUE(movePracticeBarsAside(live).isEmpty());
}

}  // namespace guanchao
