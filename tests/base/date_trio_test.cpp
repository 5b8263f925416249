#include "base/date_trio.h"

#include "base/activity.h"
#include "base/values.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

TEST(DateTrioTest, DaysFollowTheMonth) {
    const std::tuple<QString, int, QString, QString> cases[] = {{u"1"_s, 31, u"31"_s, u"29"_s},
                                                                {u"2"_s, 28, u"28"_s, u"28"_s},
                                                                {u"11月"_s, 30, u"30"_s, u"29"_s},
                                                                {u"13"_s, 0, u"31"_s, u"29"_s}};
    for (const auto& [month, count, dayAfter31, dayAfter29] : cases) {
        const QStringList days = daysOfMonth(month);
        EXPECT_EQ(days.size(), count) << month.toStdString();
        EXPECT_EQ(days.isEmpty() ? 0 : days.last().toInt(), count);
        EXPECT_EQ(dayAfterMonth(month, u"31"_s), dayAfter31) << month.toStdString();
        EXPECT_EQ(dayAfterMonth(month, u"29"_s), dayAfter29) << month.toStdString();
    }
}

TEST(DateTrioTest, TypedDatesRollOn) {
    const std::pair<DateTexts, QString> cases[] = {
        {{u"2016"_s, u"2"_s, u"29"_s}, u"2016-02-29"_s},
        {{u"2015"_s, u"2"_s, u"29"_s}, u"2015-03-01"_s},
        {{u"2015年"_s, u"14"_s, u"31"_s}, u"2016-03-02"_s},
        {{u"2015"_s, u"1"_s, u"0"_s}, u"2014-12-31"_s},
        {{u"2015"_s, u"0"_s, u"1"_s}, u"2014-12-01"_s},
        {{u"2015"_s, u"-11"_s, u"1"_s}, u"2014-01-01"_s},
        {{u"9999"_s, u"12"_s, u"31"_s}, u"9999-12-31"_s},
    };
    for (const auto& [typed, date] : cases) {
        EXPECT_EQ(dateText(packDate(typed)), date);
    }
    EXPECT_LT(packDate({}), QDate(1, 1, 1)) << "empty boxes lie before every article";
    for (const DateTexts& far : {DateTexts{u"9999"_s, u"13"_s, u"1"_s},
                                 {u"9999"_s, u"12"_s, u"32"_s},
                                 {u"99999"_s, u"1"_s, u"1"_s},
                                 {u"32767"_s, u"32767"_s, u"32767"_s},
                                 {u"-32768"_s, u"-32768"_s, u"-32768"_s},
                                 {u"2016"_s, u"1e300"_s, u"1"_s},
                                 {u"999999999"_s, u"1"_s, u"1"_s}}) {
        EXPECT_THROW(packDate(far), OperationError) << far.year.toStdString();
    }
    EXPECT_EQ(dateTexts(QDate(2016, 4, 1)), (DateTexts{u"2016"_s, u"4"_s, u"1"_s}));
    EXPECT_EQ(dateTexts(QDate()), DateTexts{});
}

}  // namespace guanchao
