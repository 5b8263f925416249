#include "market/stock_quote.h"

#include "base/activity.h"
#include "market/index_panels.h"
#include "services/stock_code.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

// 浦发银行, up by 5 % in the morning, with a book about 10.50.
static const QString usual =
    u"浦发银行,10.100,10.000,10.500,10.800,10.000,10.500,10.510,1234567,12345678.900,"
    u"100,10.500,200,10.490,349,10.480,400,10.470,500,10.460,"
    u"150,10.510,250,10.520,350,10.530,450,10.540,550,10.550,2026-11-24,10:30:00,00,"_s;

// A reply with some fields changed.
static QuoteRow reply(const QHash<int, QString>& changes = {}, const QString& values = usual) {
    QStringList fields = values.split(u',');
    for (const auto& [position, text] : changes.asKeyValueRange()) {
        fields[position] = text;
    }
    return quoteRow(u"var hq_str_sh600000=\""_s + fields.join(u',') + u"\";\n"_s);
}

static const Fundamentals healthy = {u"2026-09-30 00:00:00"_s, u"2.5"_s, u"0.75"_s, u"5.25"_s};

TEST(StockQuote, ColoursFollowTheFormerClose) {
    const std::tuple<QString, QString, Colour, Colour> cases[] = {
        {u"10.500"_s, u"5%"_s, gainColour, riseColour},
        {u"10.000"_s, u"0%"_s, gainColour, textColour},
        {u"9.876"_s, u"-1.24%"_s, lossColour, fallColour},
        {u"0.000"_s, u"0%"_s, lossColour, textColour}};
    for (const auto& [latest, gain, ofGain, ofPrice] : cases) {
        const StockPanel panel = stockPanel(reply({{3, latest}}), {}, 0, true);
        EXPECT_EQ(panel.gain, gain);
        EXPECT_EQ(panel.prices.colour, ofGain) << latest.toStdString();
        EXPECT_EQ(panel.prices.latest.colour, ofPrice) << latest.toStdString();
    }
}

TEST(StockQuote, ZerosBeforeTheOpenAndInASuspension) {
    const QHash<int, QString> suspended = {
        {1, u"0.000"_s}, {3, u"0.000"_s}, {4, u"0.000"_s}, {5, u"0.000"_s}, {8, u"0"_s}};
    const StockPanel panel = stockPanel(reply(suspended), healthy, 1e6, false);
    EXPECT_EQ(
        QStringList({panel.prices.latest.text, panel.gain, panel.prices.swing, panel.volume,
                     *panel.priceEarnings, *panel.turnoverRate, *panel.ratio}),
        QStringList({u"停牌"_s, u"0%"_s, u"0%"_s, u"0手"_s, u"0.00"_s, u"0.00%"_s, u"0.00"_s}));
    const auto latest = [](const QHash<int, QString>& fields) {
        return stockPanel(reply(fields), {}, 0, false).prices.latest.text;
    };
    EXPECT_EQ(latest({{3, u"0.000"_s}, {31, u"09:24:59"_s}}), u"0.000"_s) << "no price yet";
    EXPECT_EQ(latest({{3, u"0.000"_s}, {2, u"0.000"_s}}), u"0.000"_s) << "a first day";
    const StockPanel fresh = stockPanel(reply({{2, u"0.000"_s}, {1, u"0"_s}}), {}, 0, true);
    EXPECT_EQ(fresh.gain, u"950%"_s) << "a former close of 0 divides by 1";
    EXPECT_EQ(fresh.prices.swing, u"80%"_s) << "an open of 0 divides by 1";
    EXPECT_EQ(homeIndexPanel(reply({{3, u"0"_s}})).gain, u"-100%"_s) << "unlike that of a stock";
}

TEST(StockQuote, LimitsAreNarrowForSpecialTreatment) {
    const std::tuple<QString, QString, QString> cases[] = {
        {u"ST中安"_s, u"10.50"_s, u"9.50"_s},   {u"*ST中安"_s, u"10.50"_s, u"9.50"_s},
        {u"SST前锋"_s, u"10.50"_s, u"9.50"_s},  {u"st中安"_s, u"10.50"_s, u"9.50"_s},
        {u"S*ST前锋"_s, u"11.00"_s, u"9.00"_s}, {u"S佳通"_s, u"11.00"_s, u"9.00"_s},
        {u"中ST"_s, u"11.00"_s, u"9.00"_s},     {QString(), u"11.00"_s, u"9.00"_s},
    };
    for (const auto& [name, up, down] : cases) {
        const StockPanel panel = stockPanel(reply({{0, name}}), {}, 0, true);
        EXPECT_EQ(panel.limitUp.text, up) << name.toStdString();
        EXPECT_EQ(panel.limitDown.text, down) << name.toStdString();
    }
    const QMap<QString, QString> boards = {
        {u"BJ920799"_s, u"13.00"_s}, {u"SZ300001"_s, u"11.00"_s}, {u"SH688001"_s, u"11.00"_s}};
    for (const auto& [dm, up] : boards.asKeyValueRange()) {
        EXPECT_EQ(stockPanel(reply(), {}, 0, true, dm).limitUp.text, up) << dm.toStdString();
    }
}

TEST(StockQuote, ValuationFollowsTheReport) {
    // The day of the report, earnings and assets of a share, and what comes of them.
    const std::tuple<QString, QString, QString, QString, QString> cases[] = {
        {u"2025-12-31 00:00:00"_s, u"0.75"_s, u"5.25"_s, u"14.00"_s, u"2.00"_s},
        {u"2026-06-30 00:00:00"_s, u"0.75"_s, u"5.25"_s, u"7.00"_s, u"2.00"_s},
        {u"2026-09-30 00:00:00"_s, u"0.75"_s, u"5.25"_s, u"10.50"_s, u"2.00"_s},
        {u" 2026-9-30"_s, u"0.75"_s, u"5.25"_s, u"10.50"_s, u"2.00"_s},
        {u"2026-03-31 00:00:00"_s, u"0.75"_s, u"5.25"_s, u"3.50"_s, u"2.00"_s},
        {QString(), u"0.75"_s, u"5.25"_s, u"3.50"_s, u"2.00"_s},
        {u"2025-12-31 00:00:00"_s, u"0"_s, u"0"_s, u"10500.00"_s, u"10.50"_s},
        {u"2025-12-31 00:00:00"_s, u"-0.256"_s, u"-1.5"_s, u"-0.26"_s, u"-1.5"_s},
        {u"2025-12-31 00:00:00"_s, u"--"_s, u"--"_s, u"--"_s, u"10.50"_s},
        {u"2025-12-31 00:00:00"_s, u"1e-300"_s, u"1e-300"_s, u"--"_s, u"10.50"_s},
    };
    for (const auto& [jzrq, mgsy, mgjzc, priceEarnings, priceToBook] : cases) {
        const StockPanel panel = stockPanel(reply(), {jzrq, u"2.5"_s, mgsy, mgjzc}, 0, true);
        EXPECT_EQ(panel.priceEarnings, priceEarnings) << jzrq.toStdString();
        EXPECT_EQ(panel.priceToBook, priceToBook);
    }
    EXPECT_EQ(stockPanel(reply(), healthy, 0, true).turnoverRate, u"0.49%"_s);
    for (const QString& mqlt : {QString(), u"0"_s, u"-1"_s, u"--"_s, u"1e300"_s}) {
        const StockPanel panel = stockPanel(reply(), {{}, mqlt, u"1"_s, u"1"_s}, 0, true);
        EXPECT_FALSE(panel.priceEarnings || panel.turnoverRate || panel.priceToBook);
    }
}

TEST(StockQuote, TheVolumeRatioCountsTradingMinutes) {
    const std::tuple<QString, bool, double, std::optional<QString>> cases[] = {
        {u"10:30:00"_s, true, 1234567, u"4.00"_s},    {u"11:30:59"_s, true, 1234567, u"2.00"_s},
        {u"13:00:00"_s, true, 1234567, u"1.14"_s},  // 210 minutes still
        {u"13:00:01"_s, true, 1234567, u"2.00"_s},    {u"15:00:03"_s, true, 1234567, u"1.00"_s},
        {u"15:00:03 "_s, true, 1234567, u"1.00"_s},   {u"09:30:00"_s, true, 1234567, std::nullopt},
        {u"09:25:03"_s, true, 1234567, std::nullopt}, {u"09:31:00"_s, true, 1234567, u"240.00"_s},
        {u"09:25:03"_s, false, 1234567, u"1.00"_s},   {u"10:30:00"_s, true, 0, std::nullopt},
        {u"10:30:00"_s, false, 0, std::nullopt},
    };
    for (const auto& [time, open, mean, ratio] : cases) {
        EXPECT_EQ(stockPanel(reply({{31, time}}), {}, mean, open).ratio, ratio)
            << time.toStdString();
    }
}

TEST(StockCode, AStockIsLessThanWhatTheCodeTableTakes) {
    const QStringList stocks = {u"SH600000"_s, u"SH688001"_s, u"SZ000001"_s, u"SZ300750"_s};
    const QStringList others = {u"SH000001"_s, u"SZ399001"_s, u"SZ200002"_s};
    const QStringList foreign = {u"BJ430047"_s, u"SH6000000"_s, u"600000SH"_s, u"sh600000"_s, {}};
    for (const QString& dm : stocks + others + foreign) {
        EXPECT_EQ(isStockCode(dm), stocks.contains(dm)) << dm.toStdString();
        EXPECT_EQ(isCodeTableCode(dm), !foreign.contains(dm)) << dm.toStdString();
        EXPECT_EQ(isWholeCode(dm), !foreign.contains(dm) || dm == foreign[0]) << dm.toStdString();
    }
}

TEST(StockQuote, BadRepliesAreTold) {
    const QString line = u"var hq_str_sh600000=\""_s;
    for (const QString& text :
         QStringList{{},
                     u"var hq_str_sh999999=\"\";\n"_s,
                     u"var hq_str_sys_auth=\"FAILED\";\n"_s,
                     u"<html><body class=\"e\">502, Bad, Gateway</body></html>"_s,
                     line + u"浦发银行,10.1,10,10.5"_s,
                     line + usual.section(u',', 0, 14) + u"\";\n"_s}) {
        EXPECT_FALSE(hasStock(quoteRow(text))) << text.toStdString();
    }
    const QuoteRow broken = quoteRow(line + usual.section(u',', 0, 20));
    EXPECT_TRUE(hasStock(broken));
    EXPECT_THROW(stockPanel(broken, {}, 0, true), OperationError) << "broken off in the book";
    for (const int position : {1, 2, 3, 4, 5, 8, 9, 10}) {
        for (const QString& word : {u"text"_s, QString(), u"1e300"_s, u"1e-300"_s, u"1.5x"_s}) {
            EXPECT_THROW(stockPanel(reply({{position, word}}), {}, 0, true), OperationError);
        }
    }
    EXPECT_THROW(stockPanel(reply({{31, u"noon"_s}}), {}, 1, true), OperationError);
}

TEST(Fundamentals, ReadsTheFourKeysOfTheBlock) {
    const auto page = [](const QString& block) -> QString {
        return u"<script>var other = {mgsy:9};var stockF10ZxzbJson ="_s + block +
               u";\nvar stockDstx = {\"mgsy\":\"8\"};</script>"_s;
    };
    const QString nothing = u"|（亿）|（元）|（元）"_s;
    const QString whole = uR"({"mqlt":"2.5","mgsy":"1","mgjzc":"1"})"_s;
    const std::pair<QString, QString> cases[] = {
        {page(uR"({"jzrq":" 2026-9-30","mqlt":"2.5","mgsy":"0.75","mgjzc":"5.25"})"_s),
         u"2026-09-30|2.5（亿）|0.75（元）|5.25（元）"_s},
        {page(uR"([{"zgb":"3","jzrq":"nie","mgsy":"0","mgsy2":"7","MGJZC":"1"},{"mgsy":"6"}])"_s),
         u"nie|（亿）|0（元）|（元）"_s},
        {page(uR"({"mqlt":"1,234","rest","mgsy":"1:2","mgjzc":""})"_s),
         u"|1（亿）|1（元）|（元）"_s},
        {page(uR"({"mqlt":"2.5","mgsy":"0.75"})"_s), nothing},
        {page(QString()), nothing},
        {page(whole.chopped(1)), nothing},
        {u"var stockDstx = 1;"_s + whole, nothing},
    };
    for (const auto& [text, expected] : cases) {
        const FundamentalTexts read = fundamentalTexts(readFundamentals(text));
        EXPECT_EQ(QStringList({read.jzrq, read.mqlt, read.mgsy, read.mgjzc}).join(u'|'), expected)
            << text.toStdString();
    }
}

}  // namespace guanchao
