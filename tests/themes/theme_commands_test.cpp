#include "themes/theme_commands.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QScopeGuard>

#include "grid/sorting.h"
#include "store/failure.h"
#include "store/store_error.h"
#include "tests/support/fakes.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_stores.h"
#include "themes/theme_table.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

class ThemeCommandsTest : public ::testing::Test {
protected:
    ThemeCommandsTest() {
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 10, 1);
        store_.addCode(u"SH600519"_s, u"贵州茅台"_s, 10, 2);
        store_.addCode(u"SH000001"_s, u"上证指数"_s, 10, 3);
        store_.addMember(u"白酒"_s, u"SH600519"_s, 7);
        store_.addMember(u"白酒"_s, u"SH600000"_s, 7);
        store_.addMember(u"银行"_s, u"SH600000"_s, 7);
    }

    QStringList members(const QString& columns = u"zhutiname,dm"_s) {
        return store_.rows(u"select "_s + columns + u" from dzhzhuti order by rowid"_s);
    }
    QStringList heatNames() {
        return TestStores::rows(store_.stores.heat, u"select zhutiname from xinwenshul"_s);
    }
    QString takeShown() { return QStringList(std::exchange(dialogs_.shown, {})).join(u'/'); }

    void addOtherTables() {
        store_.run({u"insert into zhutidapanhq(zhutiname) values('白酒')"_s,
                    u"insert into zhutijiankong(zhutiname) values('白酒')"_s});
        store_.stores.heat.open().execute(u"insert into xinwenshul(zhutiname) values('白酒')"_s);
    }

    const QStringList untouched_{u"白酒|SH600519"_s, u"白酒|SH600000"_s, u"银行|SH600000"_s};

    TestStores store_;
    FakeClock clock_;
    FakeDialogs dialogs_;
    ThemeCommands commands_{store_.stores, clock_, dialogs_};
};

TEST_F(ThemeCommandsTest, AStockIsAddedIfItIsKnownAndNotAMember) {
    const QString box = u"添加到主题:银行|请输入股票代码,示例:SH600585|SH6"_s;
    const struct {
        QString typed, answer;
    } refusals[] = {
        {QString(), QString()},
        {u"sh600000"_s, u"/观潮台|该主题已加入过此股!"_s},
        {u"sh600000 "_s, u"/观潮台|没有找到此股票代码:SH600000 "_s},
    };
    for (const auto& it : refusals) {
        dialogs_.typed = it.typed;
        EXPECT_EQ(commands_.addStock(u"银行"_s), Redraw::none);
        EXPECT_EQ(takeShown(), box + it.answer);
    }
    EXPECT_EQ(members(), untouched_);
    dialogs_.typed = u"sh000001"_s;
    EXPECT_EQ(commands_.addStock(u"银行"_s), Redraw::stocks) << "an index may be added here";
    EXPECT_EQ(takeShown(), box + u"/观潮台|为该主题添加个股完成!"_s);
    EXPECT_EQ(members(u"zhutiname,dm,jc,ztktime,guanzhudu,xiangguandu"_s).last(),
              u"银行|SH000001|上证指数|2026-11-24 00:00:00|0|5"_s);
    EXPECT_EQ(store_.rows(u"select xiugaizhutitime from tempcanshu"_s),
              QStringList{u"2026-11-01 08:00:00"_s})
        << "no popup command sets the stamp";
}

TEST_F(ThemeCommandsTest, RemovingAStockAsksNothingRemovingAThemeDoes) {
    EXPECT_EQ(commands_.removeStock(u"白酒"_s, u"SH600000"_s), Redraw::stocks);
    EXPECT_EQ(takeShown(), u"观潮台|为该主题删除个股完成!"_s);
    EXPECT_EQ(members(), QStringList({u"白酒|SH600519"_s, u"银行|SH600000"_s}));
    addOtherTables();
    dialogs_.answer = false;
    EXPECT_EQ(commands_.removeTheme(u"白酒"_s), Redraw::none);
    EXPECT_EQ(takeShown(), u"观潮台|确实要删除主题'白酒'吗?"_s);
    EXPECT_EQ(members().size(), 2);
    dialogs_.answer = true;
    EXPECT_EQ(commands_.removeTheme(u"白酒"_s), Redraw::none);
    EXPECT_EQ(takeShown(), u"观潮台|确实要删除主题'白酒'吗?/观潮台|删除主题'白酒'完成!"_s);
    EXPECT_EQ(members(), QStringList{u"银行|SH600000"_s});
    EXPECT_EQ(heatNames(), QStringList{u"白酒"_s});
}

TEST_F(ThemeCommandsTest, AttentionAndRelevanceTakeWholeNumbersInTheirRange) {
    const QString outside = u"refused"_s;
    const struct {
        QString typed, attention, relevance;
    } cases[] = {
        {u"20.5"_s, u"20"_s, outside},  {u"20.6"_s, outside, outside},
        {u"10.5"_s, u"10"_s, u"10"_s},  {u"0.5"_s, outside, outside},
        {u"1.5x"_s, u"2"_s, u"2"_s},    {u"abc"_s, outside, outside},
        {QString(), outside, outside},  {u"-1"_s, outside, outside},
        {u"65537"_s, outside, outside},
    };
    for (const auto& it : cases) {
        store_.run({u"update dzhzhuti set guanzhudu=7,xiangguandu=7"_s});
        dialogs_.typed = it.typed;
        const bool attention = it.attention != outside;
        EXPECT_EQ(commands_.changeAttention(u"白酒"_s), attention ? Redraw::themes : Redraw::none);
        EXPECT_EQ(takeShown(),
                  u"修改关注度|请输入关注度，以方便查找自己最关心的主题,在1-20之间。|1/观潮台|"_s +
                      (attention ? u"修改关注度'白酒'完成!"_s : u"请输入1-20之间的数字。"_s));
        const QString value = attention ? it.attention : u"7"_s;
        EXPECT_EQ(members(u"guanzhudu"_s), QStringList({value, value, u"7"_s}));
        const bool relevance = it.relevance != outside;
        EXPECT_EQ(commands_.changeRelevance(u"白酒"_s, u"SH600000"_s),
                  relevance ? Redraw::stocks : Redraw::none);
        EXPECT_EQ(takeShown(), u"修改相关度|请输入相关度，以区别和主题的相关性,在1-10之间。|5"_s +
                                   (relevance ? QString() : u"/观潮台|请输入1-10之间的数字。"_s));
        EXPECT_EQ(members(u"xiangguandu"_s),
                  QStringList({u"7"_s, relevance ? it.relevance : u"7"_s, u"7"_s}));
    }
}

TEST_F(ThemeCommandsTest, ANewNameGoesIntoAllFourTables) {
    addOtherTables();
    const QString box = u"修改主题名称:白酒|请输入新的主题名称|白酒"_s;
    dialogs_.typed = u"  "_s;
    EXPECT_EQ(commands_.rename(u"白酒"_s), Redraw::none);
    EXPECT_EQ(takeShown(), box);
    dialogs_.typed = u" 银行 "_s;
    EXPECT_EQ(commands_.rename(u"白酒"_s), Redraw::themes);
    EXPECT_EQ(takeShown(), box + u"/观潮台|修改主题名称完成!"_s);
    EXPECT_EQ(members(u"zhutiname"_s), QStringList({u"银行"_s, u"银行"_s, u"银行"_s}))
        << "a name in use merges the themes";
    EXPECT_EQ(store_.rows(u"select zhutiname from zhutidapanhq union all"
                          u" select zhutiname from zhutijiankong"_s),
              QStringList({u"银行"_s, u"银行"_s}));
    EXPECT_EQ(heatNames(), QStringList{u"银行"_s});
}

TEST_F(ThemeCommandsTest, AFailedRenameKeepsWhatItDidAndTellsWhat) {
    addOtherTables();
    Connection::setBusyTimeout(std::chrono::milliseconds(1));
    const auto restore = qScopeGuard([] { Connection::setBusyTimeout(std::chrono::seconds(5)); });
    Connection other = store_.stores.heat.open();
    other.execute(u"begin immediate"_s);
    dialogs_.typed = u"消费"_s;
    try {
        commands_.rename(u"白酒"_s);
        FAIL() << "the heat store is locked";
    } catch (const StoreError& failure) {
        const QString text = failureText(failure);
        EXPECT_TRUE(text.startsWith(u"修改主题名称没有完成。\n\n数据文件 caijiqi.mzdat 正被"_s));
        EXPECT_TRUE(
            text.endsWith(u"已经写入并保留：主题库、主题大盘行情、主题监控。其余没有写入。"_s))
            << text.toStdString();
    }
    EXPECT_EQ(members(u"zhutiname"_s), QStringList({u"消费"_s, u"消费"_s, u"银行"_s}));
    EXPECT_EQ(store_.rows(u"select zhutiname from zhutidapanhq union all"
                          u" select zhutiname from zhutijiankong"_s),
              QStringList({u"消费"_s, u"消费"_s}));
    EXPECT_EQ(heatNames(), QStringList{u"白酒"_s});
    QFile::remove(store_.stores.heat.path);
    dialogs_.typed = u"饮料"_s;
    try {
        commands_.rename(u"消费"_s);
        FAIL() << "the heat store is missing";
    } catch (const StoreError& failure) {
        EXPECT_TRUE(failureText(failure).contains(u"已经写入并保留：主题库、"_s));
    }
    dialogs_.typed = u"x'y"_s;
    try {
        commands_.rename(u"银行"_s);
        FAIL() << "the apostrophe fails the first statement";
    } catch (const StoreError& failure) {
        EXPECT_TRUE(failureText(failure).endsWith(u"这一步没有写入任何数据。"_s));
    }
}

class SmallThemesTest : public ThemeCommandsTest {
protected:
    SmallThemesTest() {
        store_.addMember(u"银行"_s, u"SH699999"_s);
        store_.addMember(u"冷门"_s, u"SH600000"_s, 0);
        store_.addMember(u"指数"_s, u"SH000001"_s);
    }

    Globals globals_;
    ResultGrid themes_;
    ResultGrid stocks_;
    ThemeTable table_{store_.stores, globals_, clock_, dialogs_, themes_, stocks_};
};

TEST_F(SmallThemesTest, TheGridAsDisplayedTellsWhatGoes) {
    const QString box =
        u"删除小于指定只数的主题，慎重执行，不能恢复。|你想删除小于几只股票的主题呢：|2"_s;
    table_.refresh(u"0"_s, [](const UpdateLabels&) {});
    const struct {
        QString typed, answer;
    } refusals[] = {{QString(), u"请指定大于1的数据数据!"_s},
                    {u"1.4"_s, u"请指定大于1的数据数据!"_s},
                    {u"40000"_s, u"请指定2-32767之间的数字。"_s},
                    {u" 2 "_s, u"确实要全部删除小于2只股票的主题吗?"_s}};
    dialogs_.answer = false;
    for (const auto& it : refusals) {
        dialogs_.typed = it.typed;
        EXPECT_EQ(commands_.removeSmallThemes(themes_), Redraw::none);
        EXPECT_EQ(takeShown(), box + u"/观潮台|"_s + it.answer);
    }
    EXPECT_EQ(members().size(), 6);
    // Sorted by the name, descending: the last row is one that stays.
    SortCode last = SortCode::genericAscending;
    sortByHeader(themes_, 1, {u"时间"_s}, last);
    ASSERT_EQ(themes_.textMatrix(3, 1), u"白酒"_s);
    dialogs_.answer = true;
    EXPECT_EQ(commands_.removeSmallThemes(themes_), Redraw::themes);
    EXPECT_EQ(takeShown(), box + u"/观潮台|确实要全部删除小于2只股票的主题吗?"_s +
                               u"/观潮台|删除主题'白酒'完成!"_s);
    // 银行 has two rows, but one of them is not in the code table; 冷门 is under the threshold.
    EXPECT_EQ(members(), QStringList({u"白酒|SH600519"_s, u"白酒|SH600000"_s, u"冷门|SH600000"_s}));
}

TEST_F(SmallThemesTest, ASearchLimitsWhatGoesAndAFailureRollsBack) {
    table_.searchByCode(u"SH000001"_s);
    dialogs_.typed = u"9"_s;
    commands_.removeSmallThemes(themes_);
    EXPECT_EQ(store_.rows(u"select distinct zhutiname from dzhzhuti order by rowid"_s),
              QStringList({u"白酒"_s, u"银行"_s, u"冷门"_s}));
    table_.refresh(u"0"_s, [](const UpdateLabels&) {});
    themes_.setTextMatrix(2, 1, u"x'y"_s);
    EXPECT_THROW(commands_.removeSmallThemes(themes_), StoreError);
    EXPECT_EQ(members().size(), 5);
}

}  // namespace guanchao
