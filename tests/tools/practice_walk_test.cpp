#include "tools/practice_market/practice_walk.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/qt_printers.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

TEST(PracticeWalkTest, OutsideTheTradingHoursTheLastMomentStands) {
    const struct {
        QString now, moment, ended;
    } cases[] = {
        {u"2026-11-24T09:29:59"_s, u"2026-11-23 15:00:00"_s, u"2026-11-23"_s},
        {u"2026-11-24T09:30:00"_s, u"2026-11-24 09:30:00"_s, u"2026-11-23"_s},
        {u"2026-11-24T12:59:59"_s, u"2026-11-24 11:30:00"_s, u"2026-11-23"_s},
        {u"2026-11-24T13:00:01"_s, u"2026-11-24 13:00:01"_s, u"2026-11-23"_s},
        {u"2026-11-24T14:59:59"_s, u"2026-11-24 14:59:59"_s, u"2026-11-23"_s},
        {u"2026-11-24T15:00:00"_s, u"2026-11-24 15:00:00"_s, u"2026-11-24"_s},
        {u"2026-11-22T10:00:00"_s, u"2026-11-20 15:00:00"_s, u"2026-11-20"_s},  // a Sunday
        {u"2026-11-23T09:00:00"_s, u"2026-11-20 15:00:00"_s, u"2026-11-20"_s},
    };
    for (const auto& it : cases) {
        const QDateTime now = QDateTime::fromString(it.now, Qt::ISODate);
        const TradingMoment moment = tradingMoment(now);
        EXPECT_EQ(moment.day.toString(Qt::ISODate) + u' ' + moment.clock().toString(Qt::ISODate),
                  it.moment);
        EXPECT_EQ(lastEndedDay(now).toString(Qt::ISODate), it.ended) << it.now.toStdString();
    }
}

// So that a monitor above 5 % fires within a minute: polls come every 20 seconds.
TEST(PracticeWalkTest, ThreePollsOfALivelyMarketFindEachThemeUpAndDown) {
    const DayPrices day{.formerClose = 1000, .open = 1000, .last = 1000, .high = 1010, .low = 990};
    const QDateTime start(QDate(2026, 11, 24), QTime(22, 0, 0));
    for (int second = 0; second < 62; ++second) {
        double highest = 0;
        double lowest = 0;
        for (const int later : {0, 20, 40}) {
            double sum = 0;
            for (quint64 key = 1; key <= 5; ++key) {
                const DayPrices now = livelyPrices(day, key, start.addSecs(second + later));
                EXPECT_LE(std::abs(now.last - 1000), 100);
                EXPECT_TRUE(now.low <= now.last && now.last <= now.high);
                sum += static_cast<double>(now.last - 1000) / 10;
            }
            highest = std::max(highest, sum / 5);
            lowest = std::min(lowest, sum / 5);
        }
        EXPECT_GT(highest, 5) << second;
        EXPECT_LT(lowest, -5) << second;
    }
}

}  // namespace guanchao
