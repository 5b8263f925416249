#include "tools/practice_history/practice_history.h"

#include <QDir>
#include <QMap>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <algorithm>
#include <optional>

#include "platform/fixed_folders.h"
#include "research/history_store.h"
#include "research/practice_bars.h"
#include "tests/support/qt_printers.h"
#include "tools/practice_market/practice_events.h"

namespace guanchao {

// The history of one theme of eight stocks, which reaches the bar with four at their limit.
TEST(PracticeHistoryTest, TheThemeReachesTheBarOnSomeDays) {
    std::vector<PracticeStock> stocks;
    QList<ThemeMember> library;
    for (int at = 0; at < 8; ++at) {
        const QString dm = u"SH60000%1"_s.arg(at);
        stocks.push_back({dm, dm});
        library << ThemeMember{u"银行"_s, dm};
    }
    const QDate today(2026, 11, 24);
    const PracticeHistory history = practiceHistory(PracticeQuotes(stocks), library, today);
    QMap<QDate, int> limits;
    bool unbuyable = false;
    for (const DayRow& row : history.days) {
        const bool isLimit = static_cast<double>(row.close) > 1.095 * double(row.formerClose) &&
                             row.high == row.close;
        limits[row.day] += isLimit ? 1 : 0;
        unbuyable = unbuyable || (isLimit && row.high == row.low);
    }
    EXPECT_EQ(limits.size(), 400);
    EXPECT_EQ(limits.lastKey(), QDate(2026, 11, 23)) << "today's day is still to come";
    EXPECT_GT(std::ranges::count_if(limits, [](int count) { return count >= 4; }), 10);
    EXPECT_TRUE(unbuyable) << "a stock that can't be bought";
}

// A fill from the practice market goes on from these days, and by the same dividends.
TEST(PracticeHistoryTest, TheFactorsGoWithTheDividendsOfThePracticeMarket) {
    const QList<ThemeMember> library = {{u"银行"_s, u"SH600036"_s}};
    const QList<DayRow> days =
        practiceHistory(PracticeQuotes({{u"SH600036"_s, u"x"_s}}), library, QDate(2026, 11, 24))
            .days;
    std::optional<DayRow> before;
    int changes = 0;
    for (const DayRow& day : days) {
        if (day.dm != u"SH600036"_s) {
            continue;
        }
        EXPECT_TRUE(!before || goesBy(*before, day)) << day.day.toString().toStdString();
        if (before && day.factor != before->factor) {
            EXPECT_NEAR(day.factor / before->factor, dividendRatio, 1e-9);
            EXPECT_TRUE(before->day < exDividendDay && exDividendDay <= day.day);
            ++changes;
        }
        before = day;
    }
    EXPECT_EQ(changes, 1);
}

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
