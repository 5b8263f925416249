#include "tools/practice_market/practice_quotes.h"

#include "services/fundamentals.h"
#include "tests/support/qt_printers.h"
#include "tools/practice_market/practice_charts.h"
#include "tools/practice_market/practice_pages.h"

namespace guanchao {

TEST(PracticeQuotesTest, ChartsAndPagesOfAStock) {
    const QDateTime now(QDate(2026, 11, 24), QTime(10, 30, 0));
    PracticeQuotes quotes({{u"SH600000"_s, u"浦发银行"_s}, {u"SZ000001"_s, u"平安银行"_s}});
    quotes.suspend(u"SZ000001"_s);
    for (const QString& path :
         {u"/newchart/min/n/sh600000.gif"_s, u"/newchart/daily/n/sh600000.gif"_s,
          u"/newchart/min/n/sz000001.gif"_s, u"/newchart/v5/usstock/min_idx_s/.dji.gif"_s}) {
        EXPECT_TRUE(practiceChart(quotes, path, now).startsWith("GIF8")) << path.toStdString();
    }
    const Fundamentals report =
        readFundamentals(practicePage(quotes, u"/news/stock/600000.shtml"_s, now));
    EXPECT_EQ(report.jzrq, u"2026-09-30 00:00:00"_s);
    EXPECT_GT(report.floatInTenThousands(), 0);
    EXPECT_GT(report.netAssets(), 0);
    EXPECT_TRUE(practicePage(quotes, u"/SZ000001.html"_s, now).contains(u"平安银行"_s));
    EXPECT_TRUE(practicePage(quotes, u"/sh000001.html"_s, now).contains(u"上证指数"_s));
    for (const QString& path : {u"/609999/"_s, u"/SZ600000.html"_s}) {
        EXPECT_TRUE(practicePage(quotes, path, now).isEmpty()) << path.toStdString();
    }
}

}  // namespace guanchao
