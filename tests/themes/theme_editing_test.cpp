#include "themes/theme_editing.h"
#include "tests/themes/theme_fixture.h"

namespace guanchao {

class ThemeEditingTest : public ThemeFixture {
protected:
    ThemeEditingTest() {
        store_.addCode(u"SH000001"_s, u"上证指数"_s, 10, 1);
        store_.addCode(u"SH000300"_s, u"沪深300"_s, 10, 1);
        store_.addCode(u"SZ399001"_s, u"深证成指"_s, 10, 1);
        store_.addMember(u"白'酒"_s, u"SH600519"_s, 7);
        store_.run({u"update dzhzhuti set xiangguandu=9"_s});
        clock_.moment = QDateTime(QDate(2026, 11, 24), QTime(10, 0, 5, 999));
    }

    QStringList rows() { return members(u"zhutiname,dm,jc,ztktime,guanzhudu,xiangguandu"_s); }

    const QStringList untouched_{u"白'酒|SH600519||2026-10-01 00:00:00|7|9"_s};
    const QString oldStamp_ = u"2026-11-01 08:00:00"_s;
    const QString now_ = u"2026-11-24 10:00:05"_s;

    ThemeEditing editing_{store_.stores, clock_, dialogs_, edits_};
};

TEST_F(ThemeEditingTest, AddingSkipsWrongCodesAndLeavesMembersAsTheyAre) {
    // While the question stands the store can be written and the clock goes on.
    dialogs_.onAsk = [this] {
        store_.run({u"update jiankonghq set tempdel=0"_s});
        clock_.moment = clock_.moment.addSecs(60);
    };
    EXPECT_TRUE(outcomeOf(editing_.add(
        {u" 白'酒 "_s, u" sh600000，SH600519,,SH699999,SH 600000,sh000001,SH000300,SZ399001 "_s,
         u"20.5"_s},
        {})));
    EXPECT_EQ(rows(), untouched_ + QStringList{u"白'酒|SH600000|浦发银行|"_s + now_ + u"|20|5"_s});
    EXPECT_EQ(stamp(), now_);
    EXPECT_EQ(
        dialogs_.shown,
        QStringList({u"观潮台|此主题名称已存在,更新吗? "_s,
                     u"观潮台|加入主题\"白'酒\"完成!已加入：SH600000 浦发银行,SH600519 "
                     u"贵州茅台, 错误的代码：SH699999,SH 600000,SH000001,SH000300,SZ399001。"_s}));
}

TEST_F(ThemeEditingTest, RewritingRebuildsTheThemeWithEveryListedCode) {
    store_.addMember(u"白'酒"_s, u"SH000001"_s, 7);
    EXPECT_TRUE(editing_.rewrite({u"白'酒"_s, u"SH600519,SH000001,sh600519,"_s, u"abc"_s}));
    const QString row = u"白'酒|SH600519|贵州茅台|"_s + now_ + u"|0|5"_s;
    EXPECT_EQ(rows(), QStringList({row, row}));
    EXPECT_EQ(stamp(), now_);
    store_.addMember(u"银行"_s, u"SH600000"_s);
    EXPECT_TRUE(editing_.rewrite({u"白'酒"_s, u"SH600519,SH600000,"_s, u"3"_s}));
    EXPECT_EQ(editing_.open(u"白'酒"_s).codes, u"SH600519,SH600000,"_s) << "in the order as typed";
    store_.run({u"delete from dzhzhuti where zhutiname='银行'"_s});
    EXPECT_TRUE(editing_.rewrite({u"白'酒"_s, u"  "_s, u"3"_s}));
    EXPECT_TRUE(rows().isEmpty());
}

TEST_F(ThemeEditingTest, WhatIsRefusedWritesNothingAndKeepsTheDialog) {
    dialogs_.answer = false;
    EXPECT_FALSE(outcomeOf(editing_.add({u"白'酒"_s, u"SH600000"_s, u"3"_s}, {})));
    EXPECT_FALSE(outcomeOf(editing_.add({u"  "_s, u"SH600000"_s, u"3"_s}, {})));
    EXPECT_FALSE(editing_.rewrite({QString(), u"SH600000"_s, u"3"_s}));
    EXPECT_FALSE(editing_.rewrite({u"白'酒"_s, u"SH600000"_s, u"40000"_s}));
    EXPECT_EQ(dialogs_.shown,
              QStringList({u"观潮台|此主题名称已存在,更新吗? "_s, u"观潮台|没有输入主题名称!"_s,
                           u"观潮台|没有输入主题名称!"_s,
                           u"观潮台|关注度请输入-32768至32767之间的数字。"_s}));
    store_.refuse(u"insert on dzhzhuti when new.dm='SH600000'"_s);
    EXPECT_THROW(editing_.rewrite({u"白'酒"_s, u"SH600519,SH600000"_s, u"3"_s}), StoreError);
    EXPECT_EQ(rows(), untouched_);
    EXPECT_EQ(stamp(), oldStamp_);
}

}  // namespace guanchao
