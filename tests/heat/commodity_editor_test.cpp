#include "heat/commodity_editor.h"

#include "tests/support/store_test.h"

namespace guanchao {

class CommodityEditorTest : public StoreTest {
protected:
    CommodityEditorTest() {
        globals_.jintian = QDate(2026, 3, 1);
        runHeat(
            u"insert into shopname(shopname,guanzhudu,aboutgegu,riqi,zongfen,zhangfu,zhangzi)"
            u" values('铜',18,'SH601899','2026-11-24 09:00:00',-3.5,2.0,-1),"
            u"('铝',9,'SH601600','2026-11-20 09:00:00',8.0,-1.0,4)"_s);
    }

    QStringList list() {
        return heatRows(u"select shopname,guanzhudu,aboutgegu,adddate,riqi from shopname"_s);
    }

    CommodityEditor editor_{store_.stores, globals_, dialogs_, removals_};
};

TEST_F(CommodityEditorTest, ANewCommodityStandsAsCollectedTwoDaysAgoAndAChangeIsOfToday) {
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
    EXPECT_EQ(dialogs_.shown.last(), u"观潮台|此商品已存在!'锡',请点击修改按钮!"_s);
    editor_.add({u"O'x"_s, {}, {}}, show);
    EXPECT_EQ(list().last(), u"O'x|0||2026-03-01 00:00:00|2026-02-27 00:00:00"_s);
    editor_.modify({u" 铝"_s, u"SZ000807"_s, u"x"_s});
    EXPECT_EQ(list()[1], u"铝|0|SZ000807|2026-03-01 00:00:00|2026-11-20 09:00:00"_s);
    editor_.modify({u"金"_s, {}, {}});
    EXPECT_EQ(dialogs_.shown.last(), u"观潮台|没有找到商品'金',请点击添加按钮!"_s);
}

TEST_F(CommodityEditorTest, WhatTheCollectorWillPassByIsTold) {
    const std::tuple<QString, QString, bool> cases[] = {
        {u"0"_s, {}, false},        {u"0"_s, u"0"_s, false},  {u"0"_s, u"0.5度"_s, true},
        {u"5"_s, u"5"_s, false},    {u"5"_s, u"6"_s, true},   {u"-1"_s, u"x"_s, true},
        {u"null"_s, u"0"_s, false}, {u"2.5"_s, u"2"_s, false}};
    for (const auto& [limit, attention, collected] : cases) {
        runHeat(u"update canshu set shopguanzhudu="_s + limit);
        const QString words = editor_.notCollectedWords(attention);
        EXPECT_EQ(words.isEmpty(), collected) << limit.toStdString();
        EXPECT_TRUE(collected || words.contains(u"不采集"_s));
    }
}

}  // namespace guanchao
