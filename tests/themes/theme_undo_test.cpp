#include <functional>

#include "base/files.h"
#include "exchange/theme_import.h"
#include "heat/news_notes.h"
#include "tests/themes/theme_fixture.h"
#include "themes/stock_themes.h"
#include "themes/theme_commands.h"
#include "themes/theme_editing.h"

namespace guanchao {

class ThemeUndoTest : public ThemeFixture {
protected:
    ThemeUndoTest() {
        store_.addCode(u"SZ000858"_s, u"五粮液"_s, 10, 3);
        store_.run(
            {u"insert into dzhzhuti values('白酒','SH600519','茅台','2026-01-02 09:30:00',7,3)"_s,
             u"insert into dzhzhuti values('黄酒','SZ000858',null,'x',null,2)"_s,
             u"insert into dzhzhuti values('白酒','SH600000','浦发''银行','2026-01-03',1,3)"_s,
             u"insert into dzhzhuti values('银行','SH600000','浦发','2026-01-04',5,0)"_s,
             u"insert into zhutidapanhq(zhutiname,zhutizhangfu) values('白酒',0.1),('黄酒',2)"_s,
             u"insert into zhutijiankong(zhutiname,baojinzhi) values('黄酒',1),('白酒',2)"_s});
        runHeat(
            u"insert into xinwenshul(zhutiname,riqi,onecishu) values('白酒','2026-11-24',3),"
            u"('黄酒','2026-11-24',4)"_s);
        Connection heat = store_.stores.heat.open();
        for (const QString& theme : {u"白酒"_s, u"黄酒"_s}) {
            writeNewsNote(heat, {u"xinwenshul"_s, theme, u"2026-11-24"_s}, {u"eastmoney"_s});
        }
    }

    // Every row that an edit of themes may touch, with its place.
    QStringList state() {
        QStringList rows;
        for (const QString& table :
             {u"dzhzhuti"_s, u"zhutidapanhq"_s, u"zhutijiankong"_s, u"tempcanshu"_s}) {
            rows += store_.rows(u"select '%1',rowid,* from %1 order by rowid"_s.arg(table));
        }
        for (const QString& table : {u"xinwenshul"_s, u"xinwenshuoming"_s}) {
            rows += heatRows(u"select '%1',rowid,* from %1 order by rowid"_s.arg(table));
        }
        return rows;
    }
    QString next(Way way = Way::back) const {
        const std::optional<Edit> edit = edits_.next(way);
        return edit ? edit->name : QString();
    }
    bool carry(Way way) {
        const Edit edit = edits_.next(way).value();
        const bool done = carryOut(edit, way);
        if (done) {
            edits_.carriedOut(edit, way);
        }
        return done;
    }

    void rename(const QString& from, const QString& to) {
        dialogs_.typed = to;
        outcomeOf(commands_.rename(from, {}));
    }
    void removeTheme(const QString& theme) { outcomeOf(commands_.removeTheme(theme, {})); }
    void join(const QString& theme) {
        globals_.dangqiandm = u"SZ000858"_s;
        dialogs_.typed = theme;
        outcomeOf(ofStock_.joinAnother({}));
    }
    void leave() {
        globals_.dangqiandm = u"SH600000"_s;
        globals_.dangqianjc = u"白酒"_s;
        ofStock_.leave();
    }
    void removeSmall() {
        grid_.setRows(3);
        grid_.setCols(4);
        for (const int row : {1, 2}) {
            grid_.setTextMatrix(row, 1, row == 1 ? u"黄酒"_s : u"银行"_s);
            grid_.setReal(row, 3, 1);
        }
        outcomeOf(commands_.removeSmallThemes(grid_, {}));
    }

    struct Command {
        QString name;
        std::function<void()> run;
        QString typed = {};
    };
    QList<Command> commands() {
        const auto renames = [this] { outcomeOf(commands_.rename(u"白酒"_s, {})); };
        const auto adds = [this](const ThemeFields& fields) {
            return [this, fields] { outcomeOf(editing_.add(fields, {})); };
        };
        const ThemeFields rewritten{u"白酒"_s, u"SZ000858,SZ000858"_s, u"6"_s};
        return {
            {u"添加个股 黄酒 贵州茅台"_s, [this] { outcomeOf(commands_.addStock(u"黄酒"_s, {})); },
             u"sh600519"_s},
            {u"删除个股 白酒 贵州茅台"_s,
             [this] { commands_.removeStock(u"白酒"_s, u"SH600519"_s); }},
            {u"修改相关度 白酒 贵州茅台→9"_s,
             [this] { outcomeOf(commands_.changeRelevance(u"白酒"_s, u"SH600519"_s, {})); },
             u"9"_s},
            {u"修改关注度 白酒→8"_s,
             [this] { outcomeOf(commands_.changeAttention(u"白酒"_s, {})); }, u"8"_s},
            {u"修改主题名称 白酒→白'酒"_s, renames, u"白'酒"_s},
            {u"修改主题名称 白酒→黄酒"_s, renames, u"黄酒"_s},
            {u"删除主题 白酒"_s, [this] { removeTheme(u"白酒"_s); }},
            {u"删除小主题 2 个主题"_s, [this] { removeSmall(); }, u"2"_s},
            {u"添加主题 白酒"_s, adds({u"白酒"_s, u"sz000858"_s, u"6"_s})},
            {u"添加主题 新"_s, adds({u"新"_s, u"SZ000858,sh600519"_s, u"6"_s})},
            {u"修改主题 白酒"_s, [=, this] { editing_.rewrite(rewritten); }},
            {u"添加个股 新 五粮液"_s, [this] { join(u"新"_s); }},
            {u"删除个股 白酒 浦发银行"_s, [this] { leave(); }},
            {u"删除所有主题"_s, [this] { endOf(import_.deleteAll({})); }},
        };
    }
    void run(const Command& it) {
        dialogs_.typed = it.typed;
        it.run();
    }

    ThemeCommands commands_{store_.stores, clock_, dialogs_, removals_, edits_};
    ThemeEditing editing_{store_.stores, clock_, dialogs_, edits_};
    StockThemes ofStock_{store_.stores, globals_, clock_, dialogs_, edits_, grid_};
    ExchangeRun run_{[](const ShownExchange&) {}};
    ThemeImport import_{store_.stores, clock_, dialogs_, run_, removals_, edits_};
};

TEST_F(ThemeUndoTest, EachEditIsTakenBackExactlyAndDoneAgain) {
    const QStringList before = state();
    for (const Command& it : commands()) {
        run(it);
        const QStringList after = state();
        EXPECT_NE(after, before) << it.name.toStdString();
        EXPECT_EQ(next(), it.name);
        for (int round = 0; round < 2; ++round) {
            ASSERT_TRUE(carry(Way::back)) << it.name.toStdString();
            EXPECT_EQ(state(), before) << it.name.toStdString();
            EXPECT_EQ(next(Way::again), it.name);
            ASSERT_TRUE(carry(Way::again)) << it.name.toStdString();
            EXPECT_EQ(state(), after) << it.name.toStdString();
        }
        carry(Way::back);
    }
    EXPECT_EQ(next(), QString());
}

TEST_F(ThemeUndoTest, WhatWasChangedMeanwhileIsLeftAsItIs) {
    const QString add = u"insert into dzhzhuti(zhutiname,dm) values('%1','SZ000858')"_s;
    const struct {
        QString command, main, heat;
        bool done = false;
    } cases[] = {
        {u"修改主题名称 白酒→白'酒"_s, add.arg(u"白''酒"_s), {}},
        {u"修改主题名称 白酒→白'酒"_s, add.arg(u"白酒"_s), {}},
        {u"修改主题名称 白酒→白'酒"_s, u"delete from zhutijiankong where baojinzhi=2"_s, {}},
        {u"修改主题名称 白酒→白'酒"_s, {}, u"insert into xinwenshul(zhutiname) values('白''酒')"_s},
        {u"修改主题名称 白酒→黄酒"_s, {}, u"update xinwenshuoming set laiyuan='x'"_s},
        {u"删除个股 白酒 贵州茅台"_s,
         u"insert into dzhzhuti(zhutiname,dm) values('白酒','SH600519')"_s,
         {}},
        {u"修改相关度 白酒 贵州茅台→9"_s, u"update dzhzhuti set xiangguandu=2"_s, {}},
        {u"修改关注度 白酒→8"_s, u"update dzhzhuti set guanzhudu=2 where dm='SH600519'"_s, {}},
        {u"修改主题 白酒"_s, u"update dzhzhuti set jc='x' where zhutiname='白酒'"_s, {}},
        {u"删除主题 白酒"_s, add.arg(u"白酒"_s), {}},
        {u"删除所有主题"_s, add.arg(u"银行"_s), {}},
        // What polls, comparisons and imports of other themes write is in no way.
        {u"修改主题名称 白酒→白'酒"_s, u"update zhutijiankong set zhangfu=4,baojintime='x'"_s,
         u"update xinwenshul set onecishu=9"_s, true},
        {u"修改主题名称 白酒→白'酒"_s, u"delete from zhutidapanhq"_s, {}, true},
        {u"修改主题 白酒"_s, u"update tempcanshu set xiugaizhutitime='x'"_s, {}, true},
        {u"删除主题 白酒"_s, add.arg(u"银行"_s), {}, true},
    };
    QHash<QString, Command> byName;
    for (const Command& it : commands()) {
        byName.insert(it.name, it);
    }
    const auto write = [&](const StoreFile& store, const QString& statement) {
        if (!statement.isEmpty()) {
            store.open().execute(statement);
        }
    };
    const QString mainKept = store_.folder() + u"main"_s;
    const QString heatKept = store_.folder() + u"heat"_s;
    QFile::copy(store_.stores.main.path, mainKept);
    QFile::copy(store_.stores.heat.path, heatKept);
    for (const auto& it : cases) {
        run(byName.value(it.command));
        write(store_.stores.main, it.main);
        write(store_.stores.heat, it.heat);
        const QStringList meddled = state();
        const QString what = it.command + it.main + it.heat;
        EXPECT_EQ(carry(Way::back), it.done) << what.toStdString();
        EXPECT_EQ(state() == meddled, !it.done) << what.toStdString();
        replaceFile(store_.stores.main.path, contentOf(mainKept));
        replaceFile(store_.stores.heat.path, contentOf(heatKept));
    }
    removeTheme(u"白酒"_s);
    carry(Way::back);
    store_.run({u"update dzhzhuti set xiangguandu=2"_s});
    EXPECT_FALSE(carry(Way::again)) << "of what isn't as it came back nothing goes";
}

TEST_F(ThemeUndoTest, AStoreThatIsHeldKeepsAllOfIt) {
    rename(u"白酒"_s, u"黄酒"_s);
    const QStringList after = state();
    for (const StoreFile& store : {store_.stores.main, store_.stores.heat}) {
        const Impatience impatience;
        Connection other = held(store, u"immediate"_s);
        const auto failure = raisedBy<StoreError>([&] { carry(Way::back); });
        EXPECT_EQ(failure.fault(), StoreFault::busy);
        other.execute(u"rollback"_s);
        EXPECT_EQ(state(), after);
    }
    EXPECT_TRUE(carry(Way::back)) << "once it is free";
}

TEST_F(ThemeUndoTest, WhatAKilledCommitLeavesGoesAtTheStartUnlessAStoreIsHeld) {
    const QString left = store_.stores.main.path + u"-mj0123ABCD"_s;
    writeFile(left);
    {
        const Impatience impatience;
        const Connection other = held(store_.stores.heat, u"immediate"_s);
        dropCommitLeftovers(store_.stores.main, store_.stores.heat);
        EXPECT_TRUE(QFile::exists(left));
    }
    dropCommitLeftovers(store_.stores.main, store_.stores.heat);
    EXPECT_FALSE(QFile::exists(left));
}

TEST_F(ThemeUndoTest, AFailedRenameTellsWhatItHasWrittenWhichCanBeTakenBack) {
    QFile::remove(store_.stores.heat.path);
    const auto failure = raisedBy<StoreError>([this] { rename(u"白酒"_s, u"消费"_s); });
    EXPECT_TRUE(failureText(failure).endsWith(
        u"已经写入并保留：主题库、主题大盘行情、主题监控、主题日记。其余没有写入。"_s));
    EXPECT_EQ(members(u"zhutiname"_s).count(u"消费"_s), 2);
    ASSERT_TRUE(carry(Way::back));
    EXPECT_EQ(members(u"zhutiname"_s).count(u"白酒"_s), 2);
}

TEST_F(ThemeUndoTest, TheListKnowsWhatIsNoLongerToBeHad) {
    rename(u"白酒"_s, u"甲"_s);
    removeTheme(u"甲"_s);
    ASSERT_TRUE(carry(Way::back));
    EXPECT_EQ(removals_.last(mainWindowPlace), std::nullopt) << "nor by the button";
    ASSERT_TRUE(carry(Way::again));
    const RemovedRows removed = *removals_.last(mainWindowPlace);
    bringBack(removed);
    removals_.forget(removed);
    EXPECT_EQ(next(), u"修改主题名称 白酒→甲"_s) << "the button has brought it back";
    ASSERT_TRUE(carry(Way::back));
    commands_.removeStock(u"银行"_s, u"SH699999"_s);
    EXPECT_EQ(next(Way::again), u"修改主题名称 白酒→甲"_s) << "an edit of nothing is none";
    commands_.removeStock(u"银行"_s, u"SH600000"_s);
    EXPECT_EQ(next(Way::again), QString()) << "another edit is the last now";
    const Edit edit = *edits_.next(Way::back);
    ASSERT_TRUE(carryOut(edit, Way::back));
    join(u"新"_s);
    edits_.carriedOut(edit, Way::back);
    EXPECT_EQ(next(), u"添加个股 新 五粮液"_s) << "was made while the other went back";
    edits_.drop(*edits_.next(Way::back), Way::back);
    EXPECT_EQ(next(), QString());
}

}  // namespace guanchao
