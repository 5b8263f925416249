#include "themes/theme_commands.h"

#include "heat/news_notes.h"
#include "tests/themes/theme_fixture.h"
#include "themes/theme_table.h"

namespace guanchao {

class ThemeCommandsTest : public ThemeFixture {
protected:
    ThemeCommandsTest() {
        store_.addCode(u"SH000001"_s, u"上证指数"_s, 10, 3);
        store_.addMembers(u"白酒"_s, {u"SH600519"_s, u"SH600000"_s}, 7);
        store_.addMember(u"银行"_s, u"SH600000"_s, 7);
    }

    const QStringList untouched_{u"白酒|SH600519"_s, u"白酒|SH600000"_s, u"银行|SH600000"_s};

    ThemeCommands commands_{store_.stores, clock_, dialogs_, removals_, edits_};
};

TEST_F(ThemeCommandsTest, AStockIsAddedIfItIsKnownAndNotAMember) {
    const std::pair<QString, QString> refusals[] = {
        {QString(), u"添加到主题:银行|请输入股票代码,示例:SH600585|SH6"_s},
        {u"sh600000"_s, u"观潮台|该主题已加入过此股!"_s},
        {u"sh600000 "_s, u"观潮台|没有找到此股票代码:SH600000 "_s},
    };
    for (const auto& [typed, answer] : refusals) {
        dialogs_.typed = typed;
        EXPECT_EQ(outcomeOf(commands_.addStock(u"银行"_s, {})), Redraw::none);
        EXPECT_EQ(dialogs_.shown.last(), answer);
    }
    EXPECT_EQ(members(), untouched_);
    dialogs_.typed = u"sh000001"_s;
    EXPECT_EQ(outcomeOf(commands_.addStock(u"银行"_s, {})), Redraw::stocks)
        << "an index may be added here";
    EXPECT_EQ(members(u"zhutiname,dm,jc,ztktime,guanzhudu,xiangguandu"_s).last(),
              u"银行|SH000001|上证指数|2026-11-24 00:00:00|0|5"_s);
    EXPECT_EQ(stamp(), u"2026-11-01 08:00:00"_s) << "no popup command sets the stamp";
}

TEST_F(ThemeCommandsTest, RemovingAStockAsksNothingRemovingAThemeDoes) {
    dialogs_.answer = false;
    commands_.removeStock(u"白酒"_s, u"SH600000"_s);
    outcomeOf(commands_.removeTheme(u"白酒"_s, {}));
    EXPECT_EQ(told().join(u'/'),
              u"观潮台|为该主题删除个股完成!/观潮台|确实要删除主题'白酒'吗?（1 条）"_s);
    EXPECT_EQ(members(), QStringList({u"白酒|SH600519"_s, u"银行|SH600000"_s}));
}

TEST_F(ThemeCommandsTest, AttentionAndRelevanceTakeWholeNumbersInTheirRange) {
    // What is typed, and the attention and the relevance then; 7 is what was there.
    const std::tuple<QString, QString, QString> cases[] = {
        {u"20.5"_s, u"20"_s, u"7"_s}, {u"20.6"_s, u"7"_s, u"7"_s},  {u"10.5"_s, u"10"_s, u"10"_s},
        {u"0.5"_s, u"7"_s, u"7"_s},   {u"1.5x"_s, u"2"_s, u"2"_s},  {QString(), u"7"_s, u"7"_s},
        {u"-1"_s, u"7"_s, u"7"_s},    {u"65537"_s, u"7"_s, u"7"_s},
    };
    for (const auto& [typed, attention, relevance] : cases) {
        store_.run({u"update dzhzhuti set guanzhudu=7,xiangguandu=7"_s});
        dialogs_.typed = typed;
        EXPECT_EQ(outcomeOf(commands_.changeAttention(u"白酒"_s, {})) == Redraw::themes,
                  attention != u"7"_s);
        EXPECT_EQ(members(u"guanzhudu"_s), QStringList({attention, attention, u"7"_s}));
        const Redraw redraw = outcomeOf(commands_.changeRelevance(u"白酒"_s, u"SH600000"_s, {}));
        EXPECT_EQ(redraw == Redraw::stocks, relevance != u"7"_s);
        EXPECT_EQ(members(u"xiangguandu"_s), QStringList({u"7"_s, relevance, u"7"_s}));
    }
}

TEST_F(ThemeCommandsTest, ANewNameGoesIntoAllFourTables) {
    store_.run({u"insert into zhutidapanhq(zhutiname) values('白酒')"_s,
                u"insert into zhutijiankong(zhutiname) values('白酒')"_s});
    runHeat(u"insert into xinwenshul(zhutiname) values('白酒')"_s);
    Connection heat = store_.stores.heat.open();
    const NewsNote bound{u"eastmoney"_s, false, true, false};
    writeNewsNote(heat, {u"xinwenshul"_s, u"白酒"_s, u"2026-11-24"_s}, bound);
    writeNewsNote(heat, {u"xinwenshul"_s, u"银行"_s, u"2026-11-24"_s}, {u"eastmoney"_s});
    dialogs_.typed = u"  "_s;
    EXPECT_EQ(outcomeOf(commands_.rename(u"白酒"_s, {})), Redraw::none);
    dialogs_.typed = u" 银行 "_s;
    EXPECT_EQ(outcomeOf(commands_.rename(u"白酒"_s, {})), Redraw::themes);
    EXPECT_EQ(members(u"zhutiname"_s), QStringList({u"银行"_s, u"银行"_s, u"银行"_s}))
        << "a name in use merges the themes";
    EXPECT_EQ(store_.rows(u"select zhutiname from zhutidapanhq union all"
                          u" select zhutiname from zhutijiankong"_s),
              QStringList({u"银行"_s, u"银行"_s}));
    EXPECT_EQ(heatRows(u"select zhutiname from xinwenshul"_s), QStringList{u"银行"_s});
    EXPECT_EQ(readNewsNote(heat, {u"xinwenshul"_s, u"银行"_s, u"2026-11-24"_s}), bound);
}

TEST_F(ThemeCommandsTest, TheGridAsDisplayedTellsWhichSmallThemesGo) {
    store_.addMember(u"银行"_s, u"SH699999"_s);
    store_.addMember(u"冷门"_s, u"SH600000"_s, 0);
    store_.addMember(u"指数"_s, u"SH000001"_s);
    ResultGrid stocks;
    ThemeTable(store_.stores, globals_, clock_, dialogs_, grid_, stocks)
        .refresh(u"0"_s, [](const UpdateLabels&) {});
    dialogs_.answer = false;
    const std::pair<QString, QString> refusals[] = {
        {QString(), u"请指定大于1的数据数据!"_s},
        {u"1.4"_s, u"请指定大于1的数据数据!"_s},
        {u"40000"_s, u"请指定2-32767之间的数字。"_s},
        {u" 2 "_s,
         u"确实要全部删除小于2只股票的主题吗?（2 个主题）"
         u"\n\n删错了可以按 Ctrl+Z 或“撤消删除”取回。"_s}};
    for (const auto& [typed, answer] : refusals) {
        dialogs_.typed = typed;
        EXPECT_EQ(outcomeOf(commands_.removeSmallThemes(grid_, {})), Redraw::none);
        EXPECT_EQ(dialogs_.shown.last(), u"观潮台|"_s + answer);
    }
    EXPECT_EQ(members().size(), 6);
    dialogs_.answer = true;
    dialogs_.onAsk = [this] { grid_.setTextMatrix(1, 1, u"冷门"_s); };
    EXPECT_EQ(outcomeOf(commands_.removeSmallThemes(grid_, {})), Redraw::themes);
    dialogs_.onAsk = nullptr;
    // 银行 has two rows, but one of them is not in the code table; 冷门 is under the threshold.
    EXPECT_EQ(members(), QStringList({u"白酒|SH600519"_s, u"白酒|SH600000"_s, u"冷门|SH600000"_s}));
    EXPECT_EQ(removals_.last(mainWindowPlace)->words, u"2 个主题"_s);
    store_.refuse(u"delete on dzhzhuti when old.zhutiname='白酒'"_s);
    dialogs_.typed = u"9"_s;
    EXPECT_THROW(outcomeOf(commands_.removeSmallThemes(grid_, {})), StoreError);
    EXPECT_EQ(members().size(), 3) << "a failure rolls back";
}

}  // namespace guanchao
