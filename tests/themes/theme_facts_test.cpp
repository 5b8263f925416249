#include "themes/theme_facts.h"

#include "tests/support/store_test.h"

namespace guanchao {

class ThemeFactsTest : public StoreTest {
protected:
    ThemeFactsTest() {
        store_.run(
            {u"insert into dmb(dm,jc,zhangfu,totaljine) values('SH600000','浦发',3,2e8),"
             u"('SH600519','茅台',-1.5,1e8),('SH600036','招商',null,null)"_s});
        store_.addMembers(u"甲"_s, {u"SH600036"_s, u"SH600519"_s, u"SH600000"_s});
    }
};

TEST_F(ThemeFactsTest, MembersStandByTheirGainAndThoseWithoutOneLast) {
    fillMembers(grid_, readThemeMembers(store_.stores, u"甲"_s, {}).stocks);
    EXPECT_EQ(rowTexts(grid_).mid(1), QStringList({u"1|SH600000|浦发|3.00|3.00|5|200000000.00"_s,
                                                   u"2|SH600519|茅台|-1.50|-1.50|5|100000000.00"_s,
                                                   u"3|SH600036|招商|||5|"_s}));
    EXPECT_EQ(grid_.cellForeColor(2, memberBarColumn), fallColour);
}

TEST_F(ThemeFactsTest, AThemeThatHasGoneIsLookedForWhereAllItsMembersAre) {
    const QStringList codes = {u"SH600000"_s, u"SH600519"_s};
    const std::pair<QString, QStringList> cases[] = {
        {u"update dzhzhuti set zhutiname='乙'"_s, {u"乙"_s}},
        {u"insert into dzhzhuti(zhutiname,dm) values('丙','SH600000')"_s, {u"乙"_s}},
        {u"insert into dzhzhuti(zhutiname,dm) values('丙','SH600519')"_s, {u"丙"_s, u"乙"_s}},
        {u"delete from dzhzhuti where dm='SH600519'"_s, {}}};
    EXPECT_TRUE(readThemeMembers(store_.stores, u"甲"_s, codes).exists);
    for (const auto& [change, heirs] : cases) {
        store_.run({change});
        const ThemeMembers members = readThemeMembers(store_.stores, u"甲"_s, codes);
        EXPECT_FALSE(members.exists || members.theme);
        EXPECT_EQ(members.heirs, heirs) << change.toStdString();
    }
}

TEST_F(ThemeFactsTest, NewsOfThirtyDaysArticlesOfTheThemeAndMonitorsOfItAndItsMembers) {
    runHeat(
        u"insert into xinwenshul(riqi,zhutiname,onecishu) values('2026-11-24 08:00:00','甲',9),"
        u"('2026-10-26','甲',5),('2026-10-25','甲',4),('2026-11-24','乙',8)"_s);
    const QList<DayValues> news = readThemeNews(store_.stores, u"甲"_s, QDate(2026, 11, 24));
    EXPECT_EQ(textsOf(news, [](const DayValues& it) { return it.words; }),
              QStringList({u"2026-10-26　5 条"_s, u"2026-11-24　9 条"_s}));
    store_.addArticle(u"'2026-11-01','某','主题','甲','早','…'"_s);
    store_.addArticle(u"'2026-11-03','某','主题','甲','晚','…'"_s);
    store_.addArticle(u"'2026-11-03','某','个股','甲','别','…'"_s);
    fillArticles(grid_, readThemeArticles(store_.stores, u"甲"_s));
    EXPECT_EQ(columnTexts(grid_, 2), QStringList({u"标题"_s, u"晚"_s, u"早"_s}));
    store_.run(
        {u"insert into gegujiankong values('SH600519','茅台',1500,-1.5,'股价','<',1400.5,null,"
         u"1,''),('SH600999','别',1,1,'股价','<',1,null,1,'')"_s,
         u"insert into zhutijiankong values('甲',0.75,'>',2.0,3,'2026-11-20 10:31:00',1,'')"_s});
    fillMonitors(grid_, readThemeMonitors(store_.stores, u"甲"_s));
    EXPECT_EQ(rowTexts(grid_).mid(1),
              QStringList({u"1|主题|甲|涨幅 > 2%|0.75|2026-11-20 10:31:00"_s,
                           u"2|SH600519|茅台|股价 < 1400.5|1500.00|没有报过"_s}));
    fillMonitors(grid_, readThemeMonitors(store_.stores, u"乙"_s));
    EXPECT_EQ(grid_.rows() + grid_.cols(), 2) << "the hint of the view shows";
}

}  // namespace guanchao
