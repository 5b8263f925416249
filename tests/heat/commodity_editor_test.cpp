#include "heat/commodity_editor.h"

#include <gtest/gtest.h>

#include "store/store_error.h"
#include "tests/support/fakes.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

class CommodityEditorTest : public ::testing::Test {
protected:
    CommodityEditorTest() {
        globals_.jintian = QDate(2026, 3, 1);
        run(u"insert into shopname(shopname,guanzhudu,aboutgegu,riqi,zongfen,zhangfu,zhangzi)"
            u" values('铜',18,'SH601899','2026-11-24 09:00:00',-3.5,2.0,-1),"
            u"('铝',9,'SH601600','2026-11-20 09:00:00',8.0,-1.0,4)"_s);
    }

    void run(const QString& statement) { store_.stores.heat.open().execute(statement); }
    QStringList list() {
        return TestStores::rows(store_.stores.heat,
                                u"select shopname,guanzhudu,aboutgegu,adddate,riqi from shopname"
                                u" order by rowid"_s);
    }

    TestStores store_;
    Globals globals_;
    FakeDialogs dialogs_;
    CommodityEditor editor_{store_.stores, globals_, dialogs_};
};

TEST_F(CommodityEditorTest, ANewCommodityStandsAsCollectedTwoDaysAgo) {
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

TEST_F(CommodityEditorTest, AChangeRewritesTheDayOfAddingAndKeepsTheName) {
    editor_.modify({u" 铝"_s, u"SZ000807"_s, u"x"_s});
    EXPECT_EQ(list().last(), u"铝|0|SZ000807|2026-03-01 00:00:00|2026-11-20 09:00:00"_s);
    editor_.modify({u"金"_s, {}, {}});
    EXPECT_EQ(dialogs_.shown, QStringList({u"观潮台|修改商品'铝'完成!"_s,
                                           u"观潮台|没有找到商品'金',请点击添加按钮!"_s}));
}

TEST_F(CommodityEditorTest, ADeletionAsksAndTakesTheHistoryAlong) {
    run(u"insert into shophq(shopname,riqi) values('铜','2026-11-24 10:00:00')"_s);
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
