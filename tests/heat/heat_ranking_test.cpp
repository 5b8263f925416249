#include "heat/heat_ranking.h"

#include "heat/collector_contract.h"
#include "heat/heat_subjects.h"
#include "heat/url_encode.h"
#include "tests/support/store_test.h"

namespace guanchao {

TEST(UrlEncode, EncodesTheCodePageAndLetsTheRestThrough) {
    const std::pair<QString, QString> cases[] = {
        {u"a+b&c%"_s, u"a+b&c%"_s}, {u"中信 证券"_s, u"%D6%D0%D0%C5%20%D6%A4%C8%AF"_s},
        {u"丂"_s, u"%81%40"_s},   // the first of the two-byte codes
        {u"€é"_s, u"€%A8%A6"_s},  // the one is a single byte, the other two
        {u"㐀😀"_s, u"㐀😀"_s},     // not in the code page
        {QString(), QString()},
    };
    for (const auto& [text, encoded] : cases) {
        EXPECT_EQ(urlEncode(text), encoded);
    }
    EXPECT_EQ(searchPage(u"http://x/s?a=tihuandm&b=tihuandm"_s, withoutMarks(u"A/B-(C)_\"D"_s)),
              u"http://x/s?a=A%20B%20%20C%20%20%20D&b=A%20B%20%20C%20%20%20D"_s);
}

TEST(CustomDays, StandFromTwoToAThousand) {
    const std::pair<QString, std::optional<int>> cases[] = {
        {u"2"_s, 2},    {u"1000"_s, 1000}, {u"15天"_s, 15}, {u"2.5"_s, 2},
        {u"1.5"_s, 2},  {u"1"_s, {}},      {u"1001"_s, {}}, {u"abc"_s, {}},
        {u"1e9"_s, {}}, {QString(), {}},   {u"-7"_s, {}}};
    for (const auto& [typed, days] : cases) {
        EXPECT_EQ(customDays(typed), days) << typed.toStdString();
    }
}

class HeatRankingTest : public StoreTest {
protected:
    // Day, item, then the three counts with their growths.
    void add(const QString& table, const QString& key, const QString& values) {
        runHeat(
            u"insert into "_s + table + u"(riqi,"_s + key +
            u",onecishu,onezhangfu,allcishu,allzhangfu,zdycishu,zdyzhangfu,zdytianshu) values("_s +
            values + u",7)"_s);
    }
    void addTheme(const QString& values) { add(u"xinwenshul"_s, u"zhutiname"_s, values); }
    void addCompany(const QString& values) { add(u"gongsixinwen"_s, u"dm,jc"_s, values); }
    void addCommodityDay(const QString& shopname, int day) {
        runHeat(
            u"insert into shophq values('%1','2026-11-%2 10:00:00',1,2,-3,4,5,6,7,8,9.5,1000.0)"_s
                .arg(shopname)
                .arg(day));
    }

    // T and S as themes and stocks have it, R rising, F falling.
    static QString colours(const ResultGrid& grid, int row) {
        const QHash<Colour, QChar> letters{
            {themeColour, u'T'}, {stockColour, u'S'}, {riseColour, u'R'}, {fallColour, u'F'}};
        QString colours;
        for (int col = 1; col < grid.cols(); ++col) {
            colours += letters.value(grid.cellForeColor(row, col), u'.');
        }
        return colours;
    }
    HeatRanking about(const HeatSubject& subject) {
        return {store_.stores, globals_, clock_, shell_, subject, grid_, historyGrid_};
    }

    FakeShell shell_;
    ResultGrid historyGrid_;
    HeatRanking themes_ = about(themeNews());
    HeatRanking companies_ = about(companyNews());
    HeatRanking commodities_ = about(commodityPrices());
};

TEST_F(HeatRankingTest, TheRankingIsTheLatestDayByGrowthAndKeepsTheSentinel) {
    addTheme(u"'2026-11-23 10:00:00','旧题',9,9.0,9,9000.0,9,9.0"_s);
    addTheme(u"'2026-11-24 09:00:00','银行',12,-0.5,300,8.25,40,0.0"_s);
    addTheme(u"'2026-11-24 10:00:00','白酒',5,3.0,80,1000.0,20,-7.0"_s);
    addTheme(u"'2026-11-24 10:00:00','保险',1,3.0,80,8.25,20,-7.0"_s);
    themes_.showRanking(false);
    EXPECT_EQ(columnTexts(grid_, 2).mid(2), QStringList({u"保险"_s, u"银行"_s}))
        << "equal growths by name";
    EXPECT_EQ(rowText(grid_, 0),
              u"序号|日期|主题名称|一日数量|一日涨幅|全部数量|全部涨幅|"
              u"自定义数量|自定义涨幅|自定义天数"_s);
    EXPECT_EQ(rowText(grid_, 1), u"1|2026-11-24|白酒|5|3.00|80|1000.00|20|-7.00|7"_s);
    EXPECT_EQ(colours(grid_, 3), u"TSTFTRTR."_s) << "-0.5 is green, 0 is red";
}

TEST_F(HeatRankingTest, WhatComparesWithNothingIsShownAsSuchAndRanksBehindTheGrowths) {
    const QString values = u"'2026-11-24 10:00:00','%1',30,1.0,%2,%3,300,1000.0"_s;
    addTheme(values.arg(u"白酒"_s, u"10000"_s, u"1000.0"_s));
    addTheme(values.arg(u"银行"_s, u"80"_s, u"-3.0"_s));
    addTheme(values.arg(u"新题"_s, u"9"_s, u"1000.0"_s));
    addTheme(values.arg(u"新源"_s, u"70"_s, u"1000.0"_s));
    addTheme(u"'2026-11-23 10:00:00','白酒',30,1.0,70,1000.0,300,1.0"_s);
    Connection heat = store_.stores.heat.open();
    writeNewsNote(heat, {u"xinwenshul"_s, u"白酒"_s, u"2026-11-24"_s},
                  {u"eastmoney"_s, false, true, true});
    writeNewsNote(heat, {u"xinwenshul"_s, u"银行"_s, u"2026-11-23"_s},
                  {u"eastmoney"_s, true, true, true});
    writeNewsNote(heat, {u"xinwenshul"_s, u"新源"_s, u"2026-11-24"_s}, {u"eastmoney"_s});
    writeNewsNote(heat, {u"gongsixinwen"_s, u"新题"_s, u"2026-11-24"_s},
                  {u"eastmoney"_s, true, true, true});
    const QString shown = u"白酒|30|1.00|≥10000|无|≥300|无|7"_s;
    themes_.showRanking(false);
    EXPECT_EQ(columnTexts(grid_, 2).mid(1),
              (QStringList{u"新题"_s, u"银行"_s, u"新源"_s, u"白酒"_s}));
    EXPECT_EQ(rowText(grid_, 2), u"2|2026-11-24|银行|30|1.00|80|-3.00|300|1000.00|7"_s);
    EXPECT_EQ(rowText(grid_, 3), u"3|2026-11-24|新源|30|1.00|70|无|300|无|7"_s);
    EXPECT_EQ(rowText(grid_, 4), u"4|2026-11-24|"_s + shown);
    EXPECT_EQ(colours(grid_, 4), u"TSTRT.T.."_s);
    EXPECT_EQ(grid_.number(4, 5), 10000) << "by which it is sorted";
    EXPECT_EQ(grid_.data(grid_.index(3, 5), Qt::AccessibleTextRole), u"至少 10000"_s);
    themes_.showRanking(true);
    EXPECT_EQ(columnTexts(grid_, 5).mid(1), (QStringList{u"70"_s, u"9"_s, u"≥10000"_s, u"80"_s}));
    grid_.biaoji(findHeatRow(grid_, u"白酒"_s).value_or(0));
    ASSERT_TRUE(themes_.choose(grid_.markedRow()));
    const QList<DayValues> days = themes_.showHistory();
    EXPECT_EQ(days.last().words, u"2026-11-24  一日 30  全部 ≥10000  自定义 ≥300"_s);
    EXPECT_EQ(days.last().source + u'|' + days.first().source, u"eastmoney|"_s);
    EXPECT_EQ(rowText(historyGrid_, 1), u"1|2026-11-24|"_s + shown);
    EXPECT_EQ(colours(historyGrid_, 1), u"TSTRT.T.."_s);
    EXPECT_EQ(colours(historyGrid_, 2), u"TSTRTRTR."_s) << "as counted on search pages";
}

TEST_F(HeatRankingTest, AllShowsEveryItemOnceWithItsLatestDay) {
    for (const auto& [day, item] : {std::pair(24, u"银行"_s), std::pair(23, u"银行"_s),
                                    std::pair(22, u"旧题"_s), std::pair(22, u"别题"_s)}) {
        const QString values = u"'2026-11-%1 10:00:00','%2',"_s.arg(QString::number(day), item);
        addTheme(values + u"1,0.0,1,0.0,1,0.0"_s);
        addCompany(values + u"'简称',1,0.0,1,0.0,1,0.0"_s);
    }
    addTheme(u"'2026-11-24 09:00:00','银行',2,0.0,1,0.0,1,0.0"_s);
    addCompany(u"'2026-11-24 09:00:00','银行','新简称',1,0.0,1,0.0,1,0.0"_s);
    for (HeatRanking* ranking : {&themes_, &companies_}) {
        ranking->showRanking(true);
        ASSERT_EQ(grid_.rows(), 4);
        const QString last = ranking == &themes_ ? u"2"_s : u"新简称"_s;
        EXPECT_TRUE(rowText(grid_, 1).startsWith(u"1|2026-11-24|银行|"_s + last))
            << "the row written last on the latest day";
        EXPECT_TRUE(rowText(grid_, 2).startsWith(u"2|2026-11-22|别题|"_s));
        EXPECT_TRUE(rowText(grid_, 3).startsWith(u"3|2026-11-22|旧题|"_s));
    }
}

TEST_F(HeatRankingTest, TheColumnsOfACompanyTakeTheColoursOfTheirNeighbours) {
    addCompany(u"'2026-11-23 10:00:00','SH600000','浦发银行',1,1.0,1,1.0,1,1.0"_s);
    addCompany(u"'2026-11-24 10:00:00','SH600000','浦发银行',1000,1000.0,-3,-2.0,40,-5.0"_s);
    companies_.showRanking(false);
    EXPECT_EQ(rowText(grid_, 1),
              u"1|2026-11-24|SH600000|浦发银行|1000|1000.00|-3|-2.00|40|-5.00|7"_s);
    ASSERT_TRUE(companies_.choose(1));
    companies_.showHistory();
    EXPECT_EQ(globals_.dangqiangongsi + globals_.dangqianzhuti, u"SH600000"_s);
    EXPECT_EQ(rowText(historyGrid_, 1),
              u"1|2026-11-24|SH600000|浦发银行|无|1000.00|-3|-2.00|40|-5.00|7"_s)
        << "a count of 1000 reads as none, its growth stays";
    EXPECT_EQ(colours(historyGrid_, 1), u"TSTRTFTR.."_s);
    EXPECT_EQ(findHeatRow(grid_, u" 600 "_s), 1);
    EXPECT_EQ(findHeatRow(grid_, u"浦发"_s), std::nullopt) << "codes, not names";
}

TEST_F(HeatRankingTest, TheDayOfTheCommoditiesIsThatOfTheirHistoryOrToday) {
    runHeat(
        u"insert into shopname(shopname,guanzhudu,aboutgegu,riqi,zongfen,zhangfu,zhangzi)"
        u" values('铜',18,'SH601899','2026-11-24 09:00:00',-3.5,2.0,-1),"
        u"('铝',9,'SH601600','2026-11-20 09:00:00',8.0,-1.0,4)"_s);
    const auto shown = [this](bool all) {
        commodities_.showRanking(all);
        return columnTexts(grid_, 2).mid(1);
    };
    EXPECT_EQ(shown(false), QStringList{u"铜"_s}) << "collected on the clock's day";
    EXPECT_EQ(shown(true), QStringList({u"铝"_s, u"铜"_s}));
    addCommodityDay(u"铝"_s, 20);
    EXPECT_EQ(shown(false), QStringList{u"铝"_s});
    addCommodityDay(u"铝"_s, 25);
    EXPECT_EQ(shown(false), QStringList());
    shown(true);
    EXPECT_FALSE(commodities_.choose(0)) << "the header";
    ASSERT_TRUE(commodities_.choose(1));
    const QList<DayValues> days = commodities_.showHistory();
    EXPECT_EQ(rowText(historyGrid_, 2), u"2|2026-11-20|铝|9.50|1000.00|1|4|2|-3|5|8|6|7"_s)
        << "no growth reads as none here";
    EXPECT_EQ(colours(historyGrid_, 1), u"TSTRTRTFRRRR"_s);
    EXPECT_EQ(days.last().words, u"2026-11-25  上涨 4  下跌 26  总分 9.5"_s);
    Connection heat = store_.stores.heat.open();
    writeNewsNote(heat, {u"shophq"_s, u"铝"_s, u"2026-11-20"_s}, {u"eastmoney"_s});
    EXPECT_EQ(commodities_.showHistory().first().source, u"eastmoney"_s);
    EXPECT_EQ(rowText(historyGrid_, 2), u"2|2026-11-20|铝|9.50|无|1|4|2|-3|5|8|6|7"_s)
        << "but where the kind of the count is noted";
}

TEST_F(HeatRankingTest, TheSearchPageIsThatOfTheCurrentItem) {
    const std::tuple<HeatRanking&, QString, QString> cases[] = {
        {companies_, u"SH600000"_s, u"600000"_s},
        {companies_, u"6001"_s, u"6001"_s},
        {companies_, u"SH60/000"_s, u"60%20000"_s},
        {themes_, u"A/B-C"_s, u"A%20B%20C"_s},
        {commodities_, u"铜(A)"_s, u"%CD%AD%20A%20%20%BC%DB%B8%F1"_s}};
    for (const auto& [ranking, item, words] : cases) {
        globals_.*ranking.subject().current = item;
        ranking.openSearchPage(u"http://x/?q=tihuandm"_s);
        EXPECT_EQ(shell_.opened.takeLast(), u"http://x/?q="_s + words);
    }
}

}  // namespace guanchao
