#include "tools/practice_history/practice_history.h"

#include <QMap>
#include <algorithm>

#include "tests/support/qt_printers.h"

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

}  // namespace guanchao
