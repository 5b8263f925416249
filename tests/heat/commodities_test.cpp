#include "heat/commodities.h"

#include <gtest/gtest.h>

#include "heat/commodity_editor.h"
#include "store/store_error.h"
#include "tests/support/fakes.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

class CommoditiesTest : public ::testing::Test {
protected:
    CommoditiesTest() {
        globals_.jintian = QDate(2026, 3, 1);
        run(u"insert into shopname(shopname,guanzhudu,aboutgegu,riqi,zongfen,zhangfu,zhangzi)"
            u" values('铜',18,'SH601899','2026-11-24 09:00:00',-3.5,2.0,-1),"
            u"('铝',9,'SH601600','2026-11-20 09:00:00',8.0,-1.0,4)"_s);
    }

    void run(const QString& statement) { store_.stores.heat.open().execute(statement); }
    void addDay(const QString& shopname, const QString& riqi) {
        run(u"insert into shophq values('"_s + shopname + u"','"_s + riqi +
            u"',1,2,3,4,5,6,7,8,9.5,1000.0)"_s);
    }
    QStringList shown(bool all) {
        commodities_.showRanking(all);
        QStringList names;
        for (int row = 1; row < ranking_.rows(); ++row) {
            names << ranking_.textMatrix(row, 2);
        }
        return names;
    }
    // Of the first row: T and S as themes and stocks have it, R rising, F falling.
    static QString colours(const ResultGrid& grid) {
        const QHash<Colour, QChar> letters{
            {themeColour, u'T'}, {stockColour, u'S'}, {riseColour, u'R'}, {fallColour, u'F'}};
        QString colours;
        for (int col = 1; col < grid.cols(); ++col) {
            colours += letters.value(grid.cellForeColor(1, col), u'.');
        }
        return colours;
    }
    QStringList list() {
        return TestStores::rows(store_.stores.heat,
                                u"select shopname,guanzhudu,aboutgegu,adddate,riqi from shopname"
                                u" order by rowid"_s);
    }

    TestStores store_;
    Globals globals_;
    FakeClock clock_;
    FakeDialogs dialogs_;
    FakeShell shell_;
    ResultGrid ranking_;
    ResultGrid history_;
    Commodities commodities_{store_.stores, globals_, clock_, shell_, ranking_, history_};
    CommodityEditor editor_{store_.stores, globals_, dialogs_};
};

TEST_F(CommoditiesTest, TheDayIsThatOfTheHistoryOrToday) {
    EXPECT_EQ(shown(false), QStringList{u"铜"_s}) << "collected on the clock's day";
    EXPECT_EQ(shown(true), QStringList({u"铝"_s, u"铜"_s}));
    addDay(u"铝"_s, u"2026-11-20 10:00:00"_s);
    EXPECT_EQ(shown(false), QStringList{u"铝"_s});
    addDay(u"铝"_s, u"2026-11-25 10:00:00"_s);
    EXPECT_EQ(shown(false), QStringList());
}

TEST_F(CommoditiesTest, TheColumnsOfTheRankingHaveTheirColours) {
    shown(false);
    EXPECT_EQ(colours(ranking_), u"TSTFRRRRRFFFF."_s);
}

TEST_F(CommoditiesTest, APressShowsTheHistory) {
    addDay(u"铜"_s, u"2026-11-23 10:00:00"_s);
    run(u"insert into shophq(shopname,riqi,zhangzi,shengzi,dazhang,baozhang,diezi,jiangzi,dadie,"
        u"baodie,zongfen,zhangfu) values('铜','2026-11-24 10:00:00',-1,-2,-3,4,5,-6,7,8,9.5,-0.5)"_s);
    shown(false);
    ASSERT_TRUE(commodities_.choose(1));
    EXPECT_EQ(globals_.dangqianshangpin, u"铜"_s);
    EXPECT_EQ(ranking_.toolTipText(), u"SH601899"_s);
    const QList<DayValues> days = commodities_.showHistory();
    EXPECT_EQ(history_.textMatrix(1, 1), u"2026-11-24"_s);
    EXPECT_EQ(history_.textMatrix(2, 4), u"1000.00"_s) << "no growth reads as none here";
    EXPECT_EQ(colours(history_), u"TSTFTFTRRFRR"_s);
    ASSERT_EQ(days.size(), 2);
    EXPECT_EQ(days.last().words, u"2026-11-24  上涨 -2  下跌 14  总分 9.5"_s);
    EXPECT_FALSE(commodities_.choose(0)) << "the header";
}

TEST_F(CommoditiesTest, TheSearchPageIsThatOfTheCollector) {
    EXPECT_EQ(commodities_.readSettings(), u"0"_s);
    run(u"update canshu set yinqingurl='http://x/?q=tihuandm',shopguanzhudu=2.5"_s);
    EXPECT_EQ(commodities_.readSettings(), u"2.5"_s);
    globals_.dangqianshangpin = u"铜(A)"_s;
    commodities_.openSearchPage();
    EXPECT_EQ(shell_.opened, QStringList{u"http://x/?q=%CD%AD%20A%20%20%BC%DB%B8%F1"_s});
    run(u"delete from canshu"_s);
    EXPECT_EQ(commodities_.readSettings(), std::nullopt);
}

TEST_F(CommoditiesTest, ANewCommodityStandsAsCollectedTwoDaysAgo) {
    std::optional<Commodity> shown;
    const auto show = [&](const Commodity& commodity) { shown = commodity; };
    editor_.add({u" 锡 "_s, u" SZ000960 "_s, u"5.5度"_s}, show);
    EXPECT_FALSE(shown);
    EXPECT_EQ(list().last(), u"锡|5.5|SZ000960|2026-03-01 00:00:00|2026-02-27 00:00:00"_s);
    const QStringList before = list();
    editor_.add({u"锡"_s, u"别的"_s, u"1"_s}, show);
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->stocks + shown->attention, u"SZ0009605.5"_s);
    EXPECT_EQ(list(), before);
    EXPECT_EQ(dialogs_.shown, QStringList({u"观潮台|添加商品'锡'完成!"_s,
                                           u"观潮台|此商品已存在!'锡',请点击修改按钮!"_s}));
    EXPECT_THROW(editor_.add({u"O'x"_s, {}, {}}, show), StoreError);
}

TEST_F(CommoditiesTest, AChangeRewritesTheDayOfAddingAndKeepsTheName) {
    editor_.modify({u" 铝"_s, u"SZ000807"_s, u"x"_s});
    EXPECT_EQ(list().last(), u"铝|0|SZ000807|2026-03-01 00:00:00|2026-11-20 09:00:00"_s);
    editor_.modify({u"金"_s, {}, {}});
    EXPECT_EQ(dialogs_.shown, QStringList({u"观潮台|修改商品'铝'完成!"_s,
                                           u"观潮台|没有找到商品'金',请点击添加按钮!"_s}));
}

TEST_F(CommoditiesTest, ADeletionAsksAndTakesTheHistoryAlong) {
    addDay(u"铜"_s, u"2026-11-24 10:00:00"_s);
    dialogs_.answer = false;
    EXPECT_FALSE(deleteCommodity(store_.stores, dialogs_, u"铜"_s));
    EXPECT_EQ(list().size(), 2);
    dialogs_.answer = true;
    editor_.remove(u" 铜 "_s);
    EXPECT_EQ(list().size(), 1);
    EXPECT_EQ(TestStores::rows(store_.stores.heat, u"select * from shophq"_s), QStringList());
    EXPECT_EQ(dialogs_.shown.mid(1),
              QStringList({u"观潮台|确实要删除商品'铜'吗?"_s, u"观潮台|删除商品'铜'完成!"_s}));
    run(u"drop table shophq"_s);
    try {
        deleteCommodity(store_.stores, dialogs_, u"铝"_s);
        FAIL() << "the history can't be deleted";
    } catch (const StoreError& failure) {
        EXPECT_TRUE(failure.remains().contains(u"商品清单"_s));
    }
}

}  // namespace guanchao
