#include "services/quote_source.h"

#include "base/activity.h"
#include "base/values.h"
#include "formats/gbk.h"
#include "services/fundamentals.h"
#include "services/quote_reply.h"
#include "services/quote_tencent.h"
#include "tests/support/fakes.h"

namespace guanchao {

namespace {

// 茅台 at its place, whatever stands between.
QString tencentLine(const QString& code, const QString& latest, const QString& time) {
    QStringList fields(50, u"0"_s);
    fields[1] = u"贵州,茅台"_s;
    fields[3] = latest;
    fields[4] = u"1310.00"_s;
    fields[5] = u"1308.00"_s;
    fields[6] = u"52477"_s;
    fields[30] = time;
    fields[33] = u"1315.00"_s;
    fields[34] = u"1300.00"_s;
    fields[37] = u"684210.5"_s;
    return u"v_"_s + code + u"=\""_s + fields.join(u'~') + u"\";\n"_s;
}

const QString sinaLine = u"var hq_str_sh600519=\"茅台,10,10,10.5,11,10\";\n"_s;
const QString portal = u"<html>请登录</html>"_s;

}  // namespace

TEST(QuoteTencent, ALineBecomesOneOfTheUsualPositions) {
    const QString text = tencentLine(u"sh600519"_s, u"1304.00"_s, u"20261124150003"_s) +
                         tencentLine(u"sh000001"_s, u"3500.1"_s, u"20261124150003"_s) +
                         tencentLine(u"sz000001"_s, u"12"_s, u"2026"_s) +
                         tencentLine(u"sz000002"_s, u"1' or 1"_s, u"20261124150003"_s) +
                         tencentLine(u"bj920799"_s, u"33.1"_s, u"20261124150003"_s) +
                         u"v_sz000003=\"1~短\";\nv_pv_none_match=\"1\";\n"_s;
    const QString asked = u"sh600519,sh000001,sz000001,sz000002,sz000003,"_s;
    const QList<QuoteRow> rows = quoteRows(TencentQuotes().lines(gbkFromText(text), asked));
    ASSERT_EQ(rows.size(), 5) << "without the time or the fields there is no quote";
    EXPECT_EQ(rows[0].dm(), u"SH600519"_s);
    EXPECT_EQ(rows[0].text(field::name), u"贵州茅台"_s);
    const QList<qsizetype> fields = {field::open, field::formerClose, field::latest, field::high,
                                     field::low,  field::volume,      field::amount};
    const auto figure = [&](qsizetype at) { return numberText(rows[0].number(at)); };
    EXPECT_EQ(textsOf(fields, figure).join(u' '), u"1308 1310 1304 1315 1300 5247700 6842105000"_s);
    EXPECT_EQ(rows[0].text(field::day) + rows[0].text(field::time), u"2026-11-2415:00:03"_s);
    EXPECT_EQ(rows[1].number(field::volume), 52477) << "of this index the lines count lots";
    EXPECT_THROW(rows[2].number(field::latest), OperationError);
    EXPECT_EQ(rows[3].dm(), u"BJ920799"_s);
    EXPECT_TRUE(TencentQuotes().knows(u"sh600519,bj920799,"_s));
}

class QuoteSourceTest : public ::testing::Test {
protected:
    QuoteSourceTest() {
        http_.answer = [this](const QString& path) { return answers_.value(path.first(3)); };
    }
    QuotesReply fetch(const QString& codes = u"sh600519,"_s) {
        http_.addresses.clear();
        return outcomeOf(source_.fetch(codes, {}));
    }
    void answer(const QString& first, const QString& second) {
        answers_ = {{u"/li"_s, gbkFromText(first)}, {u"/q="_s, gbkFromText(second)}};
    }

    FakeClock clock_;
    FakeHttp http_;
    QHash<QString, std::optional<QByteArray>> answers_;
    Service first_{u"http://a"_s, {}, 0, 1, 0, u"sina"_s};
    Service second_{u"http://b"_s, {}, 0, 1, 0, u"tencent"_s};
    QuoteSource source_{http_, clock_, {first_, second_}};
};

TEST_F(QuoteSourceTest, TheNextServiceIsAskedWhereOneBringsNothing) {
    const QString tencent = tencentLine(u"sh600519"_s, u"1304.00"_s, u"20261124150003"_s);
    answer(sinaLine, tencent);
    EXPECT_EQ(fetch().lines, sinaLine);
    EXPECT_EQ(http_.addresses, QStringList{u"http://a/list=sh600519,"_s});
    answer(portal, tencent);
    EXPECT_TRUE(fetch().lack.isEmpty());
    EXPECT_EQ(http_.addresses,
              QStringList({u"http://a/list=sh600519,"_s, u"http://b/q=sh600519"_s}));
    fetch();
    EXPECT_EQ(http_.addresses, QStringList{u"http://b/q=sh600519"_s})
        << "the first one's silence isn't waited for with each request";
    answers_.remove(u"/q="_s);
    answers_[u"/li"_s] = gbkFromText(sinaLine);
    EXPECT_EQ(fetch().lines, sinaLine) << "nor is the second one's";
    answer(portal, {});
    EXPECT_EQ(fetch().lack, u"应答里没有行情"_s) << "the reason of the first that was asked";
    answer(sinaLine, tencent);
    clock_.moment = clock_.moment.addSecs(90);
    fetch();
    EXPECT_EQ(http_.addresses, QStringList{u"http://a/list=sh600519,"_s}) << "and is so again";
}

TEST_F(QuoteSourceTest, TheNextServiceTellsUnknownCodesToo) {
    const QString line = tencentLine(u"sh600519"_s, u"1304.00"_s, u"20261124150003"_s);
    const QString unknown = u"var hq_str_sh600520=\"\";\n"_s;
    answer(portal, line);
    EXPECT_TRUE(fetch(u"sh600519,sh600520,"_s).lines.endsWith(u"\n"_s + unknown));
    answer(portal, u"v_pv_none_match=\"1\";\n"_s);
    EXPECT_EQ(fetch(u"sh600520"_s).lines, unknown);
    answer(portal, portal);
    EXPECT_EQ(fetch(u"sh600520"_s).lack, u"应答是空的"_s) << "of the service that was asked first";
}

TEST_F(QuoteSourceTest, TheNextServiceIsAskedForWhatAReplyLeavesOut) {
    const QString whole = u"var hq_str_sh600000=\"浦发银行,10,10\";"_s;
    const QString other = tencentLine(u"sh600519"_s, u"1304.00"_s, u"20261124150003"_s);
    answer(whole + u"\nvar hq_str_sh600519=\"贵州茅"_s, other);
    const QuotesReply reply = fetch(u"sh600000,sh600519,"_s);
    EXPECT_TRUE(reply.lines.startsWith(whole));
    EXPECT_FALSE(reply.lines.contains(u"贵州茅\n"_s));
    EXPECT_EQ(quoteRows(reply.lines).at(1).dm(), u"SH600519"_s);
    EXPECT_EQ(http_.addresses, QStringList({u"http://a/list=sh600000,sh600519,"_s,
                                            u"http://b/q=sh600519,sh000001"_s}));
    answer(whole + u"\nvar hq_str_sh600519=\"\";"_s, other);
    fetch(u"sh600000,sh600519,"_s);
    EXPECT_EQ(http_.addresses.size(), 1) << "an unknown code has its line";
}

TEST_F(QuoteSourceTest, AKindIsNotAskedForWhatItDoesNotKnow) {
    answers_.clear();
    EXPECT_EQ(fetch(u"int_dji"_s).lack, u"没有应答"_s);
    EXPECT_EQ(http_.addresses, QStringList{u"http://a/list=int_dji"_s});
    Services services;
    services.quote = {first_};
    QuoteSource source(http_, clock_, services);
    services.quote.clear();
    EXPECT_EQ(outcomeOf(source.fetch(u"sh600519"_s, {})).lack,
              u"行情的网站都停用了，请在“工具 / 行情来源”里启用"_s)
        << "as they are now";
    services.quote = {second_};
    EXPECT_TRUE(outcomeOf(source.fetch(u"int_dji"_s, {})).lack.contains(u"启用别的"_s));
}

TEST(FundamentalsLine, ReadsItsPositionsOrNothing) {
    const QString line =
        u"var hq_str_sh600000_i=\"A,pfyh,2.1940,2.4606,1.8660,12.4020,11145.9783,1865347.1415,"
        u"1492277.7132,1492277.7132,0,CNY\";\n"_s;
    const Fundamentals read = readFundamentalsLine(line, u"SH600000"_s);
    EXPECT_EQ(QStringList({read.mgsy, read.mgjzc, read.mqlt}),
              QStringList({u"2.4606"_s, u"12.4020"_s, u"149.2278"_s}));
    EXPECT_TRUE(read.isOfAYear);
    EXPECT_EQ(
        readFundamentalsLine(QString(line).replace(u"2.4606"_s, u"1' or"_s), u"SH600000"_s).mgsy,
        QString());
    for (const QString& other : {line, u"var hq_str_sh600001_i=\"\";"_s, portal}) {
        EXPECT_EQ(readFundamentalsLine(other, u"SH600001"_s).mgsy, QString());
    }
}

}  // namespace guanchao
