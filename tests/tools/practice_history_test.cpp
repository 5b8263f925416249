#include "tools/practice_history/practice_history.h"

#include <gtest/gtest.h>

#include <QMap>
#include <algorithm>

#include "tests/support/qt_printers.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

// The history of one theme of eight stocks.
class PracticeHistoryTest : public ::testing::Test {
protected:
    static QStringList codes() {
        return {u"SH600000"_s, u"SH600001"_s, u"SH600002"_s, u"SZ000001"_s,
                u"SZ000002"_s, u"SZ000003"_s, u"SZ000004"_s, u"SZ000005"_s};
    }
    static PracticeQuotes quotes() {
        std::vector<PracticeStock> stocks;
        for (const QString& dm : codes()) {
            stocks.push_back({dm, dm});
        }
        return PracticeQuotes(stocks);
    }
    static QList<ThemeMember> library() {
        QList<ThemeMember> members;
        for (const QString& dm : codes()) {
            members << ThemeMember{u"银行"_s, dm};
        }
        return members;
    }
    static bool isLimit(const DayRow& row) {
        return static_cast<double>(row.close) / static_cast<double>(row.formerClose) > 1.095 &&
               row.high == row.close;
    }
    QMap<QDate, int> limits() const {
        QMap<QDate, int> limits;
        for (const DayRow& row : history_.days) {
            limits[row.day] += isLimit(row) ? 1 : 0;
        }
        return limits;
    }

    static constexpr int themeDay = 8 / 4 + 2;  // stocks at the limit

    const QDate today_{2026, 11, 24};
    const PracticeQuotes quotes_ = quotes();
    const PracticeHistory history_ = practiceHistory(quotes_, library(), today_);
};

TEST_F(PracticeHistoryTest, EachDayFollowsTheOneBeforeAndTheLastLeadsToTheQuotes) {
    QHash<QString, qint64> formerClose;
    for (const DayRow& row : history_.days) {
        EXPECT_EQ(row.formerClose, formerClose.value(row.dm, row.formerClose));
        EXPECT_TRUE(row.low <= std::min(row.open, row.close) &&
                    row.high >= std::max(row.open, row.close));
        formerClose[row.dm] = row.close;
    }
    const QDate yesterday = today_.addDays(-1);
    EXPECT_NEAR(
        static_cast<double>(formerClose[u"SH600000"_s]) / 100,
        quotes_.days(u"sh600000"_s, yesterday, today_, QDateTime(today_, QTime(0, 0)))[0].close,
        0.011);
}

TEST_F(PracticeHistoryTest, TheThemeReachesTheBarOnSomeDays) {
    const QMap<QDate, int> limits = this->limits();
    EXPECT_EQ(limits.size(), 400);
    EXPECT_EQ(limits.lastKey(), QDate(2026, 11, 23)) << "today's day is still to come";
    EXPECT_GT(std::ranges::count_if(limits.values(), [](int count) { return count >= themeDay; }),
              10);
    EXPECT_TRUE(std::ranges::any_of(history_.days, [](const DayRow& row) {
        return isLimit(row) && row.high == row.low;
    })) << "a stock that can't be bought";
}

TEST_F(PracticeHistoryTest, SomeStocksFallBehindAThemeDay) {
    const QMap<QDate, int> limits = this->limits();
    QHash<QString, QList<DayRow>> days;
    for (const DayRow& row : history_.days) {
        days[row.dm] << row;
    }
    int fallen = 0;
    for (const QList<DayRow>& rows : days) {
        for (qsizetype at = 0; at + 2 < rows.size(); ++at) {
            const bool falls = rows[at + 2].close * 100 <= rows[at].close * 93;
            fallen += limits.value(rows[at].day) >= themeDay && falls ? 1 : 0;
        }
    }
    EXPECT_GT(fallen, 10) << "by 7 % within two days";
}

}  // namespace guanchao
