#include "market/stock_quote.h"

#include <gtest/gtest.h>

#include <random>

#include "base/activity.h"
#include "market/index_panels.h"
#include "market/stock_code.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// 浦发银行, up by 5 % in the morning, with a book about 10.50.
const QString usual =
    u"浦发银行,10.100,10.000,10.500,10.800,10.000,10.500,10.510,1234567,12345678.900,"
    u"100,10.500,200,10.490,349,10.480,400,10.470,500,10.460,"
    u"150,10.510,250,10.520,350,10.530,450,10.540,550,10.550,2026-11-24,10:30:00,00,"_s;

// A reply with some fields changed.
QuoteRow reply(const QHash<int, QString>& changes = {}, const QString& values = usual) {
    QStringList fields = values.split(u',');
    for (const auto& [position, text] : changes.asKeyValueRange()) {
        fields[position] = text;
    }
    return quoteRow(u"var hq_str_sh600000=\""_s + fields.join(u',') + u"\";\n"_s);
}

const Fundamentals healthy = {u"2026-09-30 00:00:00"_s, u"2.5"_s, u"0.75"_s, u"5.25"_s};

}  // namespace

TEST(StockQuote, ShowsTheFieldsOfTheReply) {
    const StockPanel panel = stockPanel(reply({{0, u"  浦发银行 "_s}}), {}, 0, true);
    EXPECT_EQ(panel.name, u"浦发银行"_s);
    EXPECT_EQ(
        QStringList({panel.prices.open.text, panel.prices.formerClose, panel.prices.latest.text,
                     panel.prices.high.text, panel.prices.low.text}),
        QStringList({u"10.100"_s, u"10.000"_s, u"10.500"_s, u"10.800"_s, u"10.000"_s}));
    EXPECT_EQ(QStringList({panel.volume, panel.amount, panel.day, panel.time, panel.gain,
                           panel.prices.swing, panel.limitUp, panel.limitDown}),
              QStringList({u"12346手"_s, u"1235万元"_s, u"2026-11-24 00:00:00"_s, u"10:30:00"_s,
                           u"5%"_s, u"7.92%"_s, u"11"_s, u"9"_s}));
    EXPECT_EQ(panel.bids[0].lots + u' ' + panel.bids[0].price.text, u"1 10.500"_s);
    EXPECT_EQ(panel.bids[2].lots + u' ' + panel.bids[2].price.text, u"3 10.480"_s);
    EXPECT_EQ(panel.asks[0].lots + u' ' + panel.asks[0].price.text, u"2 10.510"_s);
    EXPECT_EQ(panel.asks[4].lots + u' ' + panel.asks[4].price.text, u"6 10.550"_s);
    EXPECT_FALSE(panel.priceEarnings || panel.turnoverRate || panel.priceToBook || panel.ratio)
        << "their labels stay as they stand";
}

TEST(StockQuote, ColoursFollowTheFormerClose) {
    const struct {
        QString latest, gain;
        Colour gainColour, priceColour;
    } cases[] = {
        {u"10.500"_s, u"5%"_s, gainColour, riseColour},
        {u"10.000"_s, u"0%"_s, gainColour, textColour},
        {u"9.876"_s, u"-1.24%"_s, lossColour, fallColour},
        {u"0.000"_s, u"0%"_s, lossColour, textColour},
    };
    for (const auto& it : cases) {
        const StockPanel panel = stockPanel(reply({{3, it.latest}}), {}, 0, true);
        EXPECT_EQ(panel.gain, it.gain);
        EXPECT_EQ(panel.prices.colour, it.gainColour) << it.latest.toStdString();
        EXPECT_EQ(panel.prices.latest.colour, it.priceColour) << it.latest.toStdString();
    }
}

TEST(StockQuote, ZerosBeforeTheOpenAndInASuspension) {
    const QHash<int, QString> suspended = {
        {1, u"0.000"_s}, {3, u"0.000"_s}, {4, u"0.000"_s}, {5, u"0.000"_s}, {8, u"0"_s}};
    const StockPanel panel = stockPanel(reply(suspended), healthy, 1e6, false);
    EXPECT_EQ(QStringList({panel.gain, panel.prices.swing, panel.limitUp, panel.volume,
                           *panel.priceEarnings, *panel.turnoverRate, *panel.ratio}),
              QStringList({u"0%"_s, u"0%"_s, u"11"_s, u"0手"_s, u"0.00"_s, u"0.00%"_s, u"0.00"_s}));
    const StockPanel fresh = stockPanel(reply({{2, u"0.000"_s}, {1, u"0"_s}}), {}, 0, true);
    EXPECT_EQ(fresh.gain, u"950%"_s) << "a former close of 0 divides by 1";
    EXPECT_EQ(fresh.prices.swing, u"80%"_s) << "an open of 0 divides by 1";
}

TEST(StockQuote, LimitsAreNarrowForSpecialTreatment) {
    const struct {
        QString name, up, down;
    } cases[] = {
        {u"ST中安"_s, u"10.5"_s, u"9.5"_s},  {u"*ST中安"_s, u"10.5"_s, u"9.5"_s},
        {u"SST前锋"_s, u"10.5"_s, u"9.5"_s}, {u"st中安"_s, u"10.5"_s, u"9.5"_s},
        {u"S*ST前锋"_s, u"11"_s, u"9"_s},    {u"S佳通"_s, u"11"_s, u"9"_s},
        {u"中ST"_s, u"11"_s, u"9"_s},        {QString(), u"11"_s, u"9"_s},
    };
    for (const auto& it : cases) {
        const StockPanel panel = stockPanel(reply({{0, it.name}}), {}, 0, true);
        EXPECT_EQ(panel.limitUp, it.up) << it.name.toStdString();
        EXPECT_EQ(panel.limitDown, it.down) << it.name.toStdString();
    }
}

TEST(StockQuote, ValuationFollowsTheReport) {
    const struct {
        QString jzrq, mgsy, mgjzc, priceEarnings, priceToBook;
    } cases[] = {
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
    for (const auto& it : cases) {
        const Fundamentals report = {it.jzrq, u"2.5"_s, it.mgsy, it.mgjzc};
        const StockPanel panel = stockPanel(reply(), report, 0, true);
        EXPECT_EQ(panel.priceEarnings, it.priceEarnings) << it.jzrq.toStdString();
        EXPECT_EQ(panel.priceToBook, it.priceToBook);
        EXPECT_EQ(panel.turnoverRate, u"0.49%"_s);
    }
    for (const QString& mqlt : {QString(), u"0"_s, u"-1"_s, u"--"_s, u"1e300"_s}) {
        const StockPanel panel = stockPanel(reply(), {{}, mqlt, u"1"_s, u"1"_s}, 0, true);
        EXPECT_FALSE(panel.priceEarnings || panel.turnoverRate || panel.priceToBook);
    }
}

TEST(StockQuote, TheVolumeRatioCountsTradingMinutes) {
    const struct {
        QString time;
        bool open;
        double mean;
        std::optional<QString> ratio;
    } cases[] = {
        {u"10:30:00"_s, true, 1234567, u"4.00"_s},    {u"11:30:59"_s, true, 1234567, u"2.00"_s},
        {u"13:00:00"_s, true, 1234567, u"1.14"_s},  // 210 minutes still
        {u"13:00:01"_s, true, 1234567, u"2.00"_s},    {u"15:00:03"_s, true, 1234567, u"1.00"_s},
        {u"15:00:03 "_s, true, 1234567, u"1.00"_s},   {u"09:30:00"_s, true, 1234567, std::nullopt},
        {u"09:25:03"_s, true, 1234567, std::nullopt}, {u"09:31:00"_s, true, 1234567, u"240.00"_s},
        {u"09:25:03"_s, false, 1234567, u"1.00"_s},   {u"10:30:00"_s, true, 0, std::nullopt},
        {u"10:30:00"_s, false, 0, std::nullopt},
    };
    for (const auto& it : cases) {
        EXPECT_EQ(stockPanel(reply({{31, it.time}}), {}, it.mean, it.open).ratio, it.ratio)
            << it.time.toStdString();
    }
}

TEST(StockQuote, OnlyStocksOfTheTwoExchangesAreTaken) {
    for (const QString& dm : {u"SH600000"_s, u"SH688001"_s, u"SZ000001"_s, u"SZ300750"_s}) {
        EXPECT_TRUE(isStockCode(dm)) << dm.toStdString();
    }
    for (const QString& dm : {u"SH60000"_s, u"SH6000000"_s, u"SH000001"_s, u"SZ399001"_s,
                              u"SZ200002"_s, u"BJ430047"_s, u"600000SH"_s, QString()}) {
        EXPECT_FALSE(isStockCode(dm)) << dm.toStdString();
    }
}

TEST(StockQuote, BadRepliesAreTold) {
    const QString withoutStock[] = {
        QString(),
        u"var hq_str_sh999999=\"\";\n"_s,
        u"var hq_str_sys_auth=\"FAILED\";\n"_s,
        u"<html><body class=\"e\">502, Bad, Gateway</body></html>"_s,
        u"var hq_str_sh600000=\"浦发银行,10.1,10,10.5"_s,
        u"var hq_str_sh600000=\""_s + usual.section(u',', 0, 14) + u"\";\n"_s,
    };
    for (const QString& text : withoutStock) {
        EXPECT_FALSE(hasStock(quoteRow(text))) << text.toStdString();
    }
    const QuoteRow broken = quoteRow(u"var hq_str_sh600000=\""_s + usual.section(u',', 0, 20));
    EXPECT_TRUE(hasStock(broken));
    EXPECT_THROW(stockPanel(broken, {}, 0, true), OperationError) << "broken off in the book";
    for (const int position : {1, 2, 3, 4, 5, 8, 9, 10}) {
        for (const QString& word : {u"text"_s, QString(), u"1e300"_s, u"1e-300"_s, u"1.5x"_s}) {
            EXPECT_THROW(stockPanel(reply({{position, word}}), {}, 0, true), OperationError);
        }
    }
    const StockPanel panel =
        stockPanel(reply({{6, u"text"_s}, {29, u"--"_s}, {30, u"heute"_s}}), {}, 0, true);
    EXPECT_EQ(panel.asks[4].price.text, u"--"_s) << "as received";
    EXPECT_EQ(panel.asks[4].price.colour, textColour);
    EXPECT_EQ(panel.day, u"heute"_s);
    EXPECT_THROW(stockPanel(reply({{31, u"noon"_s}}), {}, 1, true), OperationError);
}

TEST(IndexPanels, ShowTheDomesticIndexWithItsTurnover) {
    const QuoteRow shanghai = reply({},
                                    u"上证指数,3300.5,3300.0,3333.333,3340.1,3290.2,0,0,"
                                    u"345678901,412345678901,"_s +
                                        u"0,"_s.repeated(20) + u"2026-11-24,10:30:00,00"_s);
    HomeIndexPanel panel = homeIndexPanel(shanghai);
    EXPECT_EQ(QStringList({panel.name, panel.change, panel.gain, panel.prices.swing, panel.time,
                           panel.turnover.volume, panel.turnover.amount}),
              QStringList({u"上证指数"_s, u"33.33"_s, u"1.01%"_s, u"1.51%"_s, u"10:30:00"_s,
                           u"34568万手"_s, u"4123.46亿元"_s}));
    EXPECT_EQ(panel.prices.colour, gainColour);
    EXPECT_EQ(indexRatio(shanghai, panel.turnover, 34567890100, true), u"4.00"_s);
    EXPECT_EQ(indexRatio(shanghai, panel.turnover, 34567890100, false), u"1.00"_s);
    EXPECT_EQ(indexRatio(shanghai, panel.turnover, 0, true), std::nullopt);
    panel.turnover = compositeTurnover(shanghai);
    EXPECT_EQ(panel.turnover.volume, u"346万手"_s) << "shares instead of lots";
    EXPECT_EQ(panel.turnover.amount, u"4123.46亿元"_s);
    const QuoteRow still = reply({{3, u"0"_s}, {1, u"0"_s}, {2, u"0"_s}});
    EXPECT_EQ(homeIndexPanel(still).gain, u"-100%"_s);
}

TEST(IndexPanels, ShowTheOutsideIndexAsItComes) {
    const WorldIndexPanel panel =
        worldIndexPanel(quoteRow(u"var hq_str_int_dji=\"道琼斯,44123.45,-12.30,-0.030\";"_s));
    EXPECT_EQ(QStringList({panel.name, panel.index, panel.change, panel.gain}),
              QStringList({u"道琼斯"_s, u"44123.45"_s, u"-12.30"_s, u"-0.03%"_s}));
    EXPECT_FALSE(hasWorldIndex(quoteRow(u"var hq_str_r_HSI=\"\";"_s)));
    EXPECT_FALSE(hasWorldIndex(quoteRow(u"var hq_str_r_HSI=\"恒生指数,1,2\";"_s)));
    EXPECT_THROW(worldIndexPanel(quoteRow(u"\"恒生指数,1,2,n/a\";"_s)), OperationError);
}

TEST(Fundamentals, ReadsTheFourKeysOfTheBlock) {
    const auto page = [](const QString& block) -> QString {
        return u"<script>var other = {mgsy:9};var stockF10ZxzbJson ="_s + block +
               u";\nvar stockDstx = {\"mgsy\":\"8\"};</script>"_s;
    };
    const struct {
        QString text;
        QString jzrq, mqlt, mgsy, mgjzc;
    } cases[] = {
        {page(uR"({"jzrq":" 2026-9-30","mqlt":"2.5","mgsy":"0.75","mgjzc":"5.25"})"_s),
         u"2026-09-30 00:00:00"_s, u"2.5"_s, u"0.75"_s, u"5.25"_s},
        {page(uR"([{"zgb":"3","jzrq":"nie","mgsy":"0","mgsy2":"7","MGJZC":"1"},{"mgsy":"6"}])"_s),
         u"nie"_s,
         {},
         u"0"_s,
         {}},
        {page(uR"({"mqlt":"1,234","rest","mgsy":"1:2","mgjzc":""})"_s), {}, u"1"_s, u"1"_s, {}},
        {page(uR"({"mqlt":"2.5","mgsy":"0.75"})"_s), {}, {}, {}, {}},
        {page(u""_s), {}, {}, {}, {}},
        {page(u"{\"mqlt\":\"2.5\",\"a\":\"1\",\"mgsy\":\"0.75\""_s), {}, {}, {}, {}},
        {u"var stockF10ZxzbJson ={\"mqlt\":\"2.5\",\"mgsy\":\"1\",\"mgjzc\":\"1\"};"_s,
         {},
         {},
         {},
         {}},
        {u"var stockDstx = 1;{\"mqlt\":\"2.5\",\"mgsy\":\"1\",\"mgjzc\":\"1\"}"_s, {}, {}, {}, {}},
    };
    for (const auto& it : cases) {
        const Fundamentals read = readFundamentals(it.text);
        EXPECT_EQ(QStringList({read.jzrq, read.mqlt, read.mgsy, read.mgjzc}),
                  QStringList({it.jzrq, it.mqlt, it.mgsy, it.mgjzc}))
            << it.text.toStdString();
    }
    const FundamentalTexts empty = fundamentalTexts({});
    EXPECT_EQ(QStringList({empty.jzrq, empty.mqlt, empty.mgsy, empty.mgjzc}),
              QStringList({QString(), u"（亿）"_s, u"（元）"_s, u"（元）"_s}));
    EXPECT_DOUBLE_EQ(healthy.floatInTenThousands(), 25000);
}

// Replies cut, spliced and overwritten at random give a panel or an OperationError, nothing else.
TEST(QuoteFuzz, NoReplyAndNoPageBringsTheWindowDown) {
    std::mt19937 random(20261124);
    const auto below = [&random](qsizetype limit) {
        return static_cast<qsizetype>(random() % static_cast<unsigned>(limit));
    };
    const QString pieces[] = {u","_s,      u"\""_s, u";"_s,      u"\";"_s, u"{"_s,      u"}"_s,
                              u":"_s,      u"-"_s,  u"1e17"_s,   u"nan"_s, u"1e-320"_s, u"1e308"_s,
                              u"\uFFFD"_s, u"0"_s,  u"<html>"_s, QString()};
    const QString seeds[] = {
        u"var hq_str_sh600000=\""_s + usual + u"\";\n"_s,
        u"var hq_str_int_dji=\"道琼斯,44123.45,-12.30,-0.030\";"_s,
        u"var stockF10ZxzbJson ={\"jzrq\":\"2026-09-30\",\"mqlt\":\"2.5\",\"mgsy\":\"0.75\"};"
        u"var stockDstx ="_s,
    };
    const auto spoilt = [&](QString text) {
        for (qsizetype change = below(4); change >= 0 && !text.isEmpty(); --change) {
            const qsizetype from = below(text.size());
            text.replace(from, below(8), pieces[below(std::size(pieces))]);
        }
        return below(8) == 0 ? text.left(below(text.size() + 1)) : text;
    };
    int panels = 0;
    for (int turn = 0; turn < 6000; ++turn) {
        const QString text = spoilt(seeds[turn % 2]);
        const QString page = spoilt(seeds[2]);
        try {
            const QuoteRow fields = quoteRow(text);
            const Fundamentals report = readFundamentals(page);
            const bool open = turn % 2 == 0;
            if (hasStock(fields)) {
                stockPanel(fields, report, 1e6, open);
                stockPanel(fields, healthy, 0, open);
                ++panels;
            }
            if (hasHomeIndex(fields)) {
                indexRatio(fields, homeIndexPanel(fields).turnover, 1e9, open);
            }
            if (hasWorldIndex(fields)) {
                worldIndexPanel(fields);
            }
        } catch (const OperationError&) {
        }
    }
    EXPECT_GT(panels, 100) << "some replies stay whole";
}

}  // namespace guanchao
