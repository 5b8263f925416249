#include "market/polled_day.h"

#include "tests/support/qt_printers.h"

namespace guanchao {

class PolledDayTest : public ::testing::Test {
protected:
    void note(const QString& day, const QString& time, const QString& price, int volume = 100,
              const QString& dm = u"sh600000"_s, const QString& formerClose = u"10"_s) {
        const QString line = u"var hq_str_%1=\"名,9.9,%2,%3,11,9,0,0,%4,1000,"_s.arg(
                                 dm, formerClose, price, QString::number(volume)) +
                             u"0,0,"_s.repeated(10) + day + u',' + time + u",00\""_s;
        day_.note(quoteRows(line).first());
    }
    // "minute price volume" of each point.
    QString points(const QString& dm = u"SH600000"_s) const {
        return textsOf(day_.of(dm).points,
                       [](const DayPoint& it) {
                           return u"%1 %2 %3"_s.arg(it.minute)
                               .arg(double(it.price))
                               .arg(double(it.volume));
                       })
            .join(u',');
    }

    PolledDay day_;
};

TEST_F(PolledDayTest, KeepsTheLastPriceOfEachMinuteOfTheNewestDay) {
    note(u"2026-11-24"_s, u"09:30:05"_s, u"10"_s, 1);
    note(u"2026-11-24"_s, u"09:30:40"_s, u"10.5"_s, 2);
    note(u"2026-11-24"_s, u"09:32:00"_s, u"11"_s, 3);
    EXPECT_EQ(points(), u"570 10.5 2,572 11 3"_s);
    const std::tuple<QString, QString, QString, QString> passedOver[] = {
        {u"2026-11-24"_s, u"09:31:00"_s, u"9"_s, u"10"_s},
        {u"2026-11-23"_s, u"10:00:00"_s, u"9"_s, u"10"_s},
        {u"2026-11-24"_s, u"10:00:00"_s, u"0.000"_s, u"10"_s},
        {u"2026-11-24"_s, u"10:00:00"_s, u"9"_s, u"0"_s},
        {u"2026-11-24"_s, u"later"_s, u"9"_s, u"10"_s},
        {u""_s, u"10:00:00"_s, u"9"_s, u"10"_s}};
    for (const auto& [day, time, price, formerClose] : passedOver) {
        note(day, time, price, 9, u"sh600000"_s, formerClose);
        EXPECT_EQ(points(), u"570 10.5 2,572 11 3"_s) << day.toStdString() << time.toStdString();
    }
    note(u"2026-11-24"_s, u"15:00:01"_s, u"11"_s, 4);
    note(u"2026-11-24"_s, u"15:34:00"_s, u"11.2"_s, 5);
    EXPECT_EQ(points(), u"570 10.5 2,572 11 3,900 11.2 5"_s) << "the close";
    EXPECT_EQ(points(u"SH600519"_s), QString());
    note(u"2026-11-25"_s, u"09:25:00"_s, u"12"_s, 6, u"sz000001"_s);
    EXPECT_EQ(points(u"SZ000001"_s), u"565 12 6"_s);
    EXPECT_EQ(points(), QString()) << "a new day";
}

}  // namespace guanchao
