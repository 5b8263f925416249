#include "tools/practice_market/practice_quotes.h"

#include "formats/gbk.h"
#include "formats/html_tables.h"
#include "market/stored_quote.h"
#include "services/fundamentals.h"
#include "services/quote_tencent.h"
#include "tests/support/qt_printers.h"
#include "tools/practice_market/practice_charts.h"
#include "tools/practice_market/practice_pages.h"
#include "tools/practice_market/practice_tencent.h"

namespace guanchao {

class PracticeQuotesTest : public ::testing::Test {
protected:
    // The values between the quotes of the line for one code.
    QStringList values(const QString& code, const QTime& time = QTime(10, 30, 0)) const {
        return quotes_.line(code, QDateTime(QDate(2026, 11, 24), time))
            .section(u'"', 1, 1)
            .split(u',');
    }

    PracticeQuotes quotes_{{{u"SH600000"_s, u"浦发银行"_s},
                            {u"SZ000001"_s, u"平安银行"_s},
                            {u"SZ300750"_s, u"宁德时代"_s}}};
};

TEST_F(PracticeQuotesTest, LinesHaveTheShapesOfTheService) {
    const struct {
        QString code, name;
        qsizetype fields;
    } cases[] = {
        {u"sh600000"_s, u"浦发银行"_s, 34},  // Shanghai lines end in an empty field
        {u"sz000001"_s, u"平安银行"_s, 33}, {u"sh000001"_s, u"上证指数"_s, 34},
        {u"s_sh000300"_s, u"沪深300"_s, 6}, {u"int_dji"_s, u"道琼斯"_s, 4},
        {u"r_HSI"_s, u"恒生指数"_s, 4},     {u"sh999999"_s, QString(), 1},
    };
    for (const auto& it : cases) {
        EXPECT_EQ(values(it.code).size(), it.fields) << it.code.toStdString();
        EXPECT_EQ(values(it.code)[0], it.name) << it.code.toStdString();
    }
    EXPECT_EQ(quotes_.reply({u"sh600000"_s, u"600000"_s},
                            QDateTime(QDate(2026, 11, 24), QTime(10, 0, 0))),
              u"var hq_str_sys_auth=\"FAILED\";\n"_s)
        << "one malformed code spoils the batch";
}

TEST_F(PracticeQuotesTest, ASuspendedStockKeepsItsFormerCloseOnly) {
    quotes_.suspend(u"SZ000001"_s);
    const QStringList now = values(u"sz000001"_s);
    EXPECT_DOUBLE_EQ(now[3].toDouble(), 0);
    EXPECT_GT(now[2].toDouble(), 0);
    const QString line =
        quotes_.line(u"sz000001"_s, QDateTime(QDate(2026, 11, 24), QTime(10, 0, 0)));
    EXPECT_DOUBLE_EQ(storedQuote(quoteRows(line).first()).zhangfu, 0);
}

TEST_F(PracticeQuotesTest, ChartsAndPagesOfAStock) {
    const QDateTime now(QDate(2026, 11, 24), QTime(10, 30, 0));
    quotes_.suspend(u"SZ000001"_s);
    for (const QString& path :
         {u"/newchart/min/n/sh600000.gif"_s, u"/newchart/daily/n/sh600000.gif"_s,
          u"/newchart/min/n/sz000001.gif"_s, u"/newchart/v5/usstock/min_idx_s/.dji.gif"_s}) {
        EXPECT_TRUE(practiceChart(quotes_, path, now).startsWith("GIF8")) << path.toStdString();
    }
    const Fundamentals report =
        readFundamentals(practicePage(quotes_, u"/news/stock/600000.shtml"_s, now));
    EXPECT_EQ(report.jzrq, u"2026-09-30 00:00:00"_s);
    EXPECT_GT(report.floatInTenThousands(), 0);
    EXPECT_GT(report.netAssets(), 0);
    EXPECT_TRUE(practicePage(quotes_, u"/SZ000001.html"_s, now).contains(u"平安银行"_s));
    EXPECT_TRUE(practicePage(quotes_, u"/sh000001.html"_s, now).contains(u"上证指数"_s));
    for (const QString& path : {u"/609999/"_s, u"/SZ600000.html"_s}) {
        EXPECT_TRUE(practicePage(quotes_, path, now).isEmpty()) << path.toStdString();
    }
}

TEST(PracticeProxyPage, HasOneListAsTheProgramReadsIt) {
    const QList<HtmlTable> tables = readHtmlPage(gbkFromText(practiceProxyPage())).tables;
    ASSERT_EQ(tables.size(), 1);
    EXPECT_EQ(tables[0].size(), 5);
    EXPECT_EQ(tables[0][1][2], u"北京 电信"_s);
}

TEST(PracticeQuotes, EachKindOfServiceTellsTheSame) {
    const PracticeQuotes quotes({{u"SH600000"_s, u"浦发银行"_s}});
    const QDateTime now(QDate(2026, 11, 24), QTime(10, 30));
    const QStringList codes = {u"sh600000"_s, u"sh000001"_s};
    const QByteArray body = gbkFromText(practiceTencentReply(quotes, codes, now));
    const QList<QuoteRow> rows = quoteRows(TencentQuotes().lines(body, codes.join(u',')));
    const QList<QuoteRow> usual = quoteRows(quotes.reply(codes, now));
    for (qsizetype row = 0; row < codes.size(); ++row) {
        EXPECT_EQ(rows[row].dm(), usual[row].dm());
        for (const qsizetype at : {field::open, field::formerClose, field::latest, field::high,
                                   field::low, field::day, field::time}) {
            EXPECT_EQ(rows[row].text(at), usual[row].text(at)) << at;
        }
        EXPECT_NEAR(rows[row].number(field::volume), usual[row].number(field::volume), 100);
    }
    EXPECT_EQ(practiceTencentReply(quotes, {u"sh600001"_s}, now), u"v_pv_none_match=\"1\";\n"_s);
    const QString keyData = practiceKeyData(quotes, {u"sh600000_i"_s}, now);
    EXPECT_GT(readFundamentalsLine(keyData, u"SH600000"_s).floatInTenThousands(), 0);
}

}  // namespace guanchao
