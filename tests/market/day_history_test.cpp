#include "market/day_history.h"

#include <gtest/gtest.h>

#include "tests/support/fakes.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

TEST(DayHistoryTest, AsksByExchangeAndMonthCountedFromZero) {
    const struct {
        QString dm;
        QDate first, last;
        QString query;
    } cases[] = {
        {u"SH000001"_s,
         {2026, 1, 9},
         {2026, 12, 31},
         u"s=000001.ss&a=0&b=9&c=2026&d=11&e=31&f=2026"_s},
        {u"sh600000"_s, {2025, 2, 1}, {2026, 3, 1}, u"s=600000.ss&a=1&b=1&c=2025&d=2&e=1&f=2026"_s},
        {u"SZ300750"_s, {2026, 5, 1}, {2026, 5, 1}, u"s=300750.sz&a=4&b=1&c=2026&d=4&e=1&f=2026"_s},
        {u"Sh600000"_s, {2026, 5, 1}, {2026, 5, 1}, u"s=600000.sz&a=4&b=1&c=2026&d=4&e=1&f=2026"_s},
    };
    for (const auto& it : cases) {
        FakeHttp http;
        DayHistory(http, Service()).fetch(it.dm, it.first, it.last);
        EXPECT_EQ(http.paths, QStringList{u"/table.csv?"_s + it.query + u"&g=d&ignore=.csv"_s});
    }
}

// Each day as "date open high low close volume", with the close as the service wrote it.
static QStringList daysOf(const QString& reply) {
    QStringList texts;
    for (const HistoryDay& day : readDayHistory(reply).value_or(QList<HistoryDay>())) {
        texts << u"%1 %2 %3 %4 %5 %6"_s.arg(day.day.toString(Qt::ISODate))
                     .arg(day.open)
                     .arg(day.high)
                     .arg(day.low)
                     .arg(day.closeText)
                     .arg(day.volume);
    }
    return texts;
}

TEST(DayHistoryTest, TakesTheLinesThatAreDays) {
    const QString header = u"Date,Open,High,Low,Close,Volume,Adj Close\n"_s;
    const QString newer = u"2026-11-20,10,11,9,10.50,700,10.50\n"_s;
    const QString older = u"2026-11-19,9,10,8,9.000,600,9.000\n"_s;
    const QStringList both = {u"2026-11-19 9 10 8 9.000 600"_s, u"2026-11-20 10 11 9 10.50 700"_s};
    const struct {
        const char* name;
        QString reply;
        QStringList days;
    } cases[] = {
        {"oldest first", header + newer + older, both},
        {"line ends of another system", QString(header + newer + older).replace(u"\n"_s, u"\r\n"_s),
         both},
        {"one day is too short", header + newer, {}},
        {"two days without a last line feed", QString(header + newer + older).chopped(1), {}},
        {"four fields are no day", header + newer + u"2026-11-18,1,2,3\n"_s + older, both},
        {"five fields have no volume",
         header + u"2026-11-20,1,2,3,4\n2026-11-19,1,2,3,5\n"_s,
         {u"2026-11-19 1 2 3 5 0"_s, u"2026-11-20 1 2 3 4 0"_s}},
        {"a close that is no number", header + newer + u"2026-11-18,1,2,3,null,4\n"_s + older,
         both},
        {"a page of HTML", u"<html>\n<p>a,b,1,2,3,4\n<p>c,d,1,2,4,4\n</html>\n"_s, {}},
        {"nothing", QString(), {}},
    };
    for (const auto& it : cases) {
        EXPECT_EQ(daysOf(it.reply), it.days) << it.name;
    }
}

}  // namespace guanchao
