#include "heat/news_ranking.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include "heat/collector_contract.h"
#include "heat/commodities.h"
#include "heat/heat_grid.h"
#include "heat/url_encode.h"
#include "store/recordset.h"
#include "store/store_error.h"
#include "tests/support/fakes.h"
#include "tests/support/grid_texts.h"
#include "tests/support/qt_printers.h"
#include "tests/support/statement_log.h"
#include "tests/support/test_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

TEST(UrlEncode, EncodesTheCodePageAndLetsTheRestThrough) {
    const struct {
        QString text, encoded;
    } cases[] = {
        {u"a+b&c%"_s, u"a+b&c%"_s},
        {u"中信 证券"_s, u"%D6%D0%D0%C5%20%D6%A4%C8%AF"_s},
        {u"丂"_s, u"%81%40"_s},                 // the first of the two-byte codes
        {u"。ＡΩ"_s, u"%A1%A3%A3%C1%A6%B8"_s},  // marks and letters of two bytes
        {u"€é"_s, u"€%A8%A6"_s},                // the one is a single byte, the other two
        {u"㐀😀"_s, u"㐀😀"_s},                   // not in the code page
        {QString(), QString()},
    };
    for (const auto& it : cases) {
        EXPECT_EQ(urlEncode(it.text), it.encoded);
    }
    EXPECT_EQ(searchPage(u"http://x/s?a=tihuandm&b=tihuandm"_s, withoutMarks(u"A/B-(C)_\"D"_s)),
              u"http://x/s?a=A%20B%20%20C%20%20%20D&b=A%20B%20%20C%20%20%20D"_s);
    EXPECT_EQ(searchPage({}, u"银行"_s), QString());
}

TEST(CustomDays, StandFromTwoToAThousand) {
    const struct {
        QString typed;
        std::optional<int> days;
    } cases[] = {{u"2"_s, 2},    {u"1000"_s, 1000}, {u"15天"_s, 15}, {u"2.5"_s, 2},
                 {u"1.5"_s, 2},  {u"1"_s, {}},      {u"1001"_s, {}}, {u"abc"_s, {}},
                 {u"1e9"_s, {}}, {QString(), {}},   {u"-7"_s, {}}};
    for (const auto& it : cases) {
        EXPECT_EQ(customDays(it.typed), it.days) << it.typed.toStdString();
    }
}

class NewsRankingTest : public ::testing::Test {
protected:
    void run(const QString& statement) { store_.stores.heat.open().execute(statement); }

    // Day, item, then the three counts with their growths.
    void addTheme(const QString& values) {
        run(u"insert into xinwenshul(riqi,zhutiname,onecishu,onezhangfu,allcishu,allzhangfu,"
            u"zdycishu,zdyzhangfu,zdytianshu) values("_s +
            values + u")"_s);
    }
    void addCompany(const QString& values) {
        run(u"insert into gongsixinwen(riqi,dm,jc,onecishu,onezhangfu,allcishu,allzhangfu,"
            u"zdycishu,zdyzhangfu,zdytianshu) values("_s +
            values + u")"_s);
    }

    static QStringList row(const ResultGrid& grid, int row) {
        QStringList texts;
        for (int col = 0; col < grid.cols(); ++col) {
            texts << grid.textMatrix(row, col);
        }
        return texts;
    }
    static QList<Colour> colours(const ResultGrid& grid, int row) {
        QList<Colour> colours;
        for (int col = 1; col < grid.cols(); ++col) {
            colours << grid.cellForeColor(row, col);
        }
        return colours;
    }

    TestStores store_;
    Globals globals_;
    FakeShell shell_;
    ResultGrid rankingGrid_;
    ResultGrid historyGrid_;
    NewsRanking themes_{store_.stores, globals_, shell_, themeNews(), rankingGrid_, historyGrid_};
    NewsRanking companies_{store_.stores, globals_,     shell_,
                           companyNews(), rankingGrid_, historyGrid_};
};

TEST_F(NewsRankingTest, WithoutRowsTheGridIsEmpty) {
    addTheme(u"'2026-11-24 10:00:00','银行',1,2,3,4,5,6,7"_s);
    themes_.showRanking(false);
    companies_.showRanking(true);
    EXPECT_EQ(rankingGrid_.rows(), 1);
    EXPECT_FALSE(companies_.choose(1));
    EXPECT_EQ(findHeatRow(rankingGrid_, {}), std::nullopt);
}

TEST_F(NewsRankingTest, TheRankingIsTheLatestDayByGrowthAndKeepsTheSentinel) {
    addTheme(u"'2026-11-23 10:00:00','旧题',9,9.0,9,9000.0,9,9.0,7"_s);
    addTheme(u"'2026-11-24 09:00:00','银行',12,-0.5,300,8.25,40,0.0,7"_s);
    addTheme(u"'2026-11-24 10:00:00','白酒',5,3.0,80,1000.0,20,-7.0,7"_s);
    addTheme(u"'2026-11-24 10:00:00','保险',1,3.0,80,8.25,20,-7.0,7"_s);
    themes_.showRanking(false);
    ASSERT_EQ(rankingGrid_.rows(), 4);
    EXPECT_EQ(columnTexts(rankingGrid_, 2).mid(2), QStringList({u"保险"_s, u"银行"_s}))
        << "equal growths by name";
    EXPECT_EQ(row(rankingGrid_, 0),
              QStringList({u"序号"_s, u"日期"_s, u"主题名称"_s, u"一日数量"_s, u"一日涨幅"_s,
                           u"全部数量"_s, u"全部涨幅"_s, u"自定义数量"_s, u"自定义涨幅"_s,
                           u"自定义天数"_s}));
    EXPECT_EQ(row(rankingGrid_, 1),
              QStringList({u"1"_s, u"2026-11-24"_s, u"白酒"_s, u"5"_s, u"3.00"_s, u"80"_s,
                           u"1000.00"_s, u"20"_s, u"-7.00"_s, u"7"_s}));
    EXPECT_EQ(colours(rankingGrid_, 3),
              QList<Colour>({themeColour, stockColour, themeColour, fallColour, themeColour,
                             riseColour, themeColour, riseColour, textColour}))
        << "-0.5 is green, 0 is red";
}

TEST_F(NewsRankingTest, AllShowsEveryItemOnceWithItsLatestDay) {
    for (const auto& [day, item] : {std::pair(24, u"银行"_s), std::pair(23, u"银行"_s),
                                    std::pair(22, u"旧题"_s), std::pair(22, u"别题"_s)}) {
        const QString values = u"'2026-11-%1 10:00:00','%2',"_s.arg(QString::number(day), item);
        addTheme(values + u"1,0.0,1,0.0,1,0.0,7"_s);
        addCompany(values + u"'简称',1,0.0,1,0.0,1,0.0,7"_s);
    }
    addTheme(u"'2026-11-24 09:00:00','银行',2,0.0,1,0.0,1,0.0,7"_s);
    addCompany(u"'2026-11-24 09:00:00','银行','新简称',1,0.0,1,0.0,1,0.0,7"_s);
    for (NewsRanking* ranking : {&themes_, &companies_}) {
        ranking->showRanking(true);
        ASSERT_EQ(rankingGrid_.rows(), 4);
        const QString last = ranking == &themes_ ? u"2"_s : u"新简称"_s;
        EXPECT_EQ(row(rankingGrid_, 1).mid(1, 3), QStringList({u"2026-11-24"_s, u"银行"_s, last}))
            << "the row written last on the latest day";
        EXPECT_EQ(row(rankingGrid_, 2).mid(1, 2), QStringList({u"2026-11-22"_s, u"别题"_s}));
        EXPECT_EQ(row(rankingGrid_, 3).mid(1, 2), QStringList({u"2026-11-22"_s, u"旧题"_s}));
    }
}

TEST_F(NewsRankingTest, APressShowsTheHistoryInWhichTheSentinelReadsNone) {
    addTheme(u"'2026-11-23 10:00:00','银行',1000,1000.0,100,-1.0,1000,1000.5,7"_s);
    addTheme(u"'2026-11-24 10:00:00','银行',12,20.0,300,1000.0,40,0.0,7"_s);
    themes_.showRanking(false);
    ASSERT_TRUE(themes_.choose(1));
    const QList<DayValues> days = themes_.showHistory();
    EXPECT_EQ(globals_.dangqianzhuti, u"银行"_s);
    EXPECT_EQ(row(historyGrid_, 1),
              QStringList({u"1"_s, u"2026-11-24"_s, u"银行"_s, u"12"_s, u"20.00"_s, u"300"_s,
                           u"无"_s, u"40"_s, u"0.00"_s, u"7"_s}));
    EXPECT_EQ(historyGrid_.cellForeColor(1, 6), riseColour);
    EXPECT_EQ(row(historyGrid_, 2).mid(3, 6),
              QStringList({u"1000"_s, u"无"_s, u"100"_s, u"-1.00"_s, u"1000"_s, u"1000.50"_s}))
        << "only the growths, and only 1000 itself";
    ASSERT_EQ(days.size(), 2);
    EXPECT_EQ(days.first().day, QDate(2026, 11, 23));
    EXPECT_EQ(days.last().words, u"2026-11-24  一日 12  全部 300  自定义 40"_s);
    EXPECT_EQ(days.last().values, QList<double>({12, 300, 40}));
    EXPECT_FALSE(themes_.choose(0));
}

TEST_F(NewsRankingTest, ARankingThatCannotBeReadLeavesAnEmptyGrid) {
    addTheme(u"'2026-11-24','银行',1,1.0,1,3.0,1,1.0,7"_s);
    themes_.showRanking(false);
    run(u"alter table xinwenshul rename to other"_s);
    run(u"create view xinwenshul as select riqi,zhutiname from other"_s);
    EXPECT_THROW(themes_.showRanking(false), StoreError);
    EXPECT_EQ(rankingGrid_.rows(), 1);
}

TEST_F(NewsRankingTest, TheColumnsOfACompanyTakeTheColoursOfTheirNeighbours) {
    addCompany(u"'2026-11-23 10:00:00','SH600000','浦发银行',1,1.0,1,1.0,1,1.0,7"_s);
    addCompany(u"'2026-11-24 10:00:00','SH600000','浦发银行',1000,1000.0,-3,-2.0,40,-5.0,7"_s);
    companies_.showRanking(false);
    EXPECT_EQ(row(rankingGrid_, 1).mid(2, 4),
              QStringList({u"SH600000"_s, u"浦发银行"_s, u"1000"_s, u"1000.00"_s}));
    ASSERT_TRUE(companies_.choose(1));
    companies_.showHistory();
    EXPECT_EQ(globals_.dangqiangongsi, u"SH600000"_s);
    EXPECT_EQ(globals_.dangqianzhuti, QString());
    EXPECT_EQ(row(historyGrid_, 1).mid(4, 4),
              QStringList({u"无"_s, u"1000.00"_s, u"-3"_s, u"-2.00"_s}))
        << "a count of 1000 reads as none, its growth stays";
    EXPECT_EQ(colours(historyGrid_, 1),
              QList<Colour>({themeColour, stockColour, themeColour, riseColour, themeColour,
                             fallColour, themeColour, riseColour, textColour, textColour}));
}

TEST_F(NewsRankingTest, TheSearchPageIsThatOfTheCurrentItem) {
    const QString page = u"http://x/?q=tihuandm"_s;
    const struct {
        QString code, opened;
    } companies[] = {{u"SH600000"_s, u"http://x/?q=600000"_s},
                     {u"6001"_s, u"http://x/?q=6001"_s},
                     {u"SH60/000"_s, u"http://x/?q=60%20000"_s}};
    for (const auto& it : companies) {
        globals_.dangqiangongsi = it.code;
        companies_.openSearchPage(page);
        EXPECT_EQ(shell_.opened.takeLast(), it.opened);
    }
    globals_.dangqianzhuti = u"A/B-C"_s;
    themes_.openSearchPage(page);
    EXPECT_EQ(shell_.opened.takeLast(), u"http://x/?q=A%20B%20C"_s);
}

TEST_F(NewsRankingTest, FindTakesTheFirstRowThatHoldsTheText) {
    addCompany(u"'2026-11-24','','空名',1,1.0,1,3.0,1,1.0,7"_s);
    addCompany(u"'2026-11-24','SH600000','浦发银行',1,1.0,1,2.0,1,1.0,7"_s);
    addCompany(u"'2026-11-24','SH600519','贵州茅台',1,1.0,1,1.0,1,1.0,7"_s);
    companies_.showRanking(false);
    EXPECT_EQ(findHeatRow(rankingGrid_, u" 519 "_s), 3);
    EXPECT_EQ(findHeatRow(rankingGrid_, {}), 2) << "the first that isn't empty";
    EXPECT_EQ(findHeatRow(rankingGrid_, u"茅台"_s), std::nullopt) << "codes, not names";
}

// No statement may scan years of counts.
TEST_F(NewsRankingTest, TheStatementsFindTheirRowsByIndexes) {
    addTheme(u"'2026-11-24','银行',1,1.0,1,3.0,1,1.0,7"_s);
    addCompany(u"'2026-11-24','SH600000','浦发银行',1,1.0,1,3.0,1,1.0,7"_s);
    run(u"insert into shopname(shopname,riqi) values('铜','2026-11-24')"_s);
    run(u"insert into shophq(shopname,riqi) values('铜','2026-11-24')"_s);
    const FakeClock clock;
    Commodities commodities(store_.stores, globals_, clock, shell_, rankingGrid_, historyGrid_);
    const auto use = [](auto& ranking) {
        for (const bool all : {true, false}) {
            ranking.showRanking(all);
        }
        ranking.choose(1);
        ranking.showHistory();
    };
    const StatementLog log;
    use(themes_);
    use(companies_);
    use(commodities);
    QStringList statements;
    for (const QString& statement : StatementLog::statements()) {
        // The list of commodities is short.
        if (statement.contains(u"date(riqi)"_s) && !statement.contains(u"from shopname"_s)) {
            statements << statement.section(u": "_s, 1);
        }
    }
    statements.removeDuplicates();
    const QRegularExpression scanOfAll(u"SCAN (TABLE )?(xinwenshul|gongsixinwen|shophq)$"_s);
    EXPECT_EQ(statements.size(), 10) << "four of each ranking of news, two of shophq";
    for (const QString& statement : statements) {
        const QStringList plan =
            TestStores::rows(store_.stores.heat, u"explain query plan "_s + statement);
        EXPECT_FALSE(plan.filter(u"USING"_s).isEmpty());
        EXPECT_TRUE(plan.filter(scanOfAll).isEmpty()) << statement.toStdString() << '\n'
                                                      << plan.join(u'\n').toStdString();
    }
}

}  // namespace guanchao
