#include "tools/practice_market/practice_walk.h"

#include "tests/support/qt_printers.h"

namespace guanchao {

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

}  // namespace guanchao
