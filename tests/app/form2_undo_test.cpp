// 撤消 and 重做 of the main window, by its keys.
#include "tests/app/form2_fixture.h"
#include "themes/form22.h"

namespace guanchao {

class Form2UndoTest : public Form2Test {
protected:
    Form2UndoTest() {
        load();
        activate();
        view(u"MSHFlexGrid1"_s).setFocus();
    }

    void rename(const QString& from, const QString& to) {
        globals_.dangqianzhuti = from;
        dialogs_.typed = to;
        trigger(u"修改主题名称"_s);
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
        QTest::keyClick(&view(u"MSHFlexGrid1"_s), key, modifiers);
    }
    void untilThemesAre(const QStringList& themes) {
        until([&] {
            return columnTexts(grid(u"MSHFlexGrid1"_s), 1).mid(1) == themes &&
                   QThreadPool::globalInstance()->activeThreadCount() == 0;
        });
    }
    QStringList entries() const {
        QStringList words;
        for (const QString& name : {u"撤消"_s, u"重做"_s}) {
            const auto* entry = find<QAction>(name);
            words << (entry->isEnabled() ? entry->text() : QString());
        }
        return words;
    }
};

TEST_F(Form2UndoTest, TheKeysTakeAnEditBackByItsNameAndDoItAgain) {
    EXPECT_EQ(entries(), QStringList({QString(), QString()}));
    const QStringList former = columnTexts(grid(u"MSHFlexGrid1"_s), 1).mid(1);
    const QStringList renamed = QStringList(former).replaceInStrings(u"白酒"_s, u"黄&酒"_s);
    rename(u"白酒"_s, u"黄&酒"_s);
    untilThemesAre(renamed);
    const QString name = u"修改主题名称 白酒→黄&酒"_s;
    const QString inMenu = u"修改主题名称 白酒→黄&&酒"_s;
    EXPECT_EQ(entries(), QStringList({u"撤消 "_s + inMenu, QString()}));
    globals_.dangqianzhuti = u"黄&酒"_s;
    key(Qt::Key_Z);
    EXPECT_EQ(entries(), QStringList({QString(), QString()})) << "while it is under way";
    untilThemesAre(former);
    EXPECT_EQ(globals_.dangqianzhuti, u"白酒"_s);
    EXPECT_EQ(label(u"Label1"_s), u"已撤消："_s + name);
    EXPECT_EQ(columnTexts(grid(u"MSHFlexGrid2"_s), 2).mid(1), QStringList{u"SH600519"_s})
        << "the stocks are those of the name again";
    EXPECT_EQ(entries(), QStringList({QString(), u"重做 "_s + inMenu}));
    key(Qt::Key_Y);
    untilThemesAre(renamed);
    key(Qt::Key_Z);
    untilThemesAre(former);
    key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    untilThemesAre(renamed);
}

TEST_F(Form2UndoTest, DeletedThemesComeBackByTheKeysTooAsDoesWhatAnotherWindowEdits) {
    const QStringList former = columnTexts(grid(u"MSHFlexGrid1"_s), 1).mid(1);
    globals_.dangqianzhuti = u"银行"_s;
    trigger(u"删除主题"_s);
    EXPECT_TRUE(button(u"undo"_s)->isVisible());
    key(Qt::Key_Z);
    until([&] { return !entries()[1].isEmpty(); });
    EXPECT_FALSE(button(u"undo"_s)->isVisible());
    untilThemesAre(former);
    key(Qt::Key_Y);
    until([&] { return !entries()[0].isEmpty(); });
    EXPECT_TRUE(button(u"undo"_s)->isVisible());
    EXPECT_EQ(store_.rows(u"select zhutiname from dzhzhuti"_s), QStringList{u"白酒"_s});
    key(Qt::Key_Z);
    untilThemesAre(former);

    press(u"银行"_s, u"SH600000"_s, u"浦发银行"_s);
    trigger(u"所属全部主题"_s);
    auto* themes = shownWindow<Form22>();
    GridView& list = *child<GridView>(themes, u"MSHFlexGrid1"_s);
    press(u"银行"_s, u"SH600000"_s, u"银行"_s);
    child<QAction>(themes, u"从该主题删除"_s)->trigger();
    activate();
    key(Qt::Key_Z);
    until([&] { return !entries()[1].isEmpty(); });
    key(Qt::Key_Y);
    until([&] { return gridOf(list).rows() == 1 && !entries()[0].isEmpty(); });
    key(Qt::Key_Z);
    until([&] { return gridOf(list).rows() == 2; });
}

TEST_F(Form2UndoTest, RowsThatHaveChangedAndAStoreThatIsHeldAreTold) {
    rename(u"白酒"_s, u"黄酒"_s);
    rename(u"银行"_s, u"金融"_s);
    store_.run({u"insert into dzhzhuti(zhutiname,dm) values('金融','SH600519')"_s});
    told();
    key(Qt::Key_Z);
    until([&] { return !dialogs_.shown.isEmpty(); });
    EXPECT_TRUE(told()[0].contains(u"没有撤消“修改主题名称 银行→金融”：这些数据后来又改动过"_s));
    until([&] { return !entries()[0].isEmpty(); });
    EXPECT_EQ(entries()[0], u"撤消 修改主题名称 白酒→黄酒"_s) << "the one before it is next";

    const Impatience impatience;
    const Connection other = held(stores_.main, u"immediate"_s);
    key(Qt::Key_Z);
    until([&] { return !failures_.told.isEmpty(); });
    EXPECT_TRUE(failures_.told[0].startsWith(u"撤消主题修改没有完成。"_s));
    EXPECT_EQ(entries()[0], u"撤消 修改主题名称 白酒→黄酒"_s) << "can be tried again";
}

TEST_F(Form2UndoTest, AWindowThatGoesWhileTheWorkerWaitsLeavesTheStoreWhole) {
    QAction undo;
    QAction redo;
    rename(u"白酒"_s, u"黄酒"_s);
    auto menu = std::make_unique<UndoMenu>(undo, redo, environment_,
                                           [](const Edit&, Way) { FAIL() << "is gone"; });
    Connection other = held(stores_.main, u"immediate"_s);
    undo.trigger();
    until([&] { return QThreadPool::globalInstance()->activeThreadCount() == 1; });
    menu.reset();
    other.execute(u"rollback"_s);
    until([] { return QThreadPool::globalInstance()->activeThreadCount() == 0; });
    EXPECT_EQ(store_.rows(u"select zhutiname from dzhzhuti order by rowid"_s),
              QStringList({u"银行"_s, u"白酒"_s}));
}

}  // namespace guanchao
