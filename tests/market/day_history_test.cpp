#include "market/day_history.h"

#include "tests/support/qt_printers.h"

namespace guanchao {

TEST(DayHistoryTest, AsksByExchangeAndMonthCountedFromZero) {
    const QDate first(2025, 2, 1);
    const QDate last(2026, 12, 31);
    const QString days = u"&a=1&b=1&c=2025&d=11&e=31&f=2026&g=d&ignore=.csv"_s;
    for (const auto& [dm, symbol] :
         {std::pair(u"SH000001"_s, u"000001.ss"_s), std::pair(u"sh600000"_s, u"600000.ss"_s),
          std::pair(u"SZ300750"_s, u"300750.sz"_s), std::pair(u"Sh600000"_s, u"600000.sz"_s)}) {
        EXPECT_EQ(dayHistoryPath(dm, first, last), u"/table.csv?s="_s + symbol + days);
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
