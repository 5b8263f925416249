// The map under a real mouse and real keys, beside the main window that it follows.
#include "themes/form38.h"

#include <QAccessible>

#include "market/form21.h"
#include "market/form36.h"
#include "tests/app/form2_fixture.h"
#include "themes/map_view.h"

namespace guanchao {

class Form38Test : public Form2Test {
protected:
    Form38Test() {
        store_.addCode(u"SH600036"_s, u"招商银行"_s, 10, 4);
        store_.run({u"update dmb set totaljine=5e8 where dm='SH600036'"_s});
        store_.addMember(u"银行"_s, u"SH600036"_s);
        load();
        trigger(u"热力图"_s);
        window_ = shownWindow<Form38>();
        form_ = window_;
        map_ = find<MapView>(u"map"_s);
        until([this] { return !map_->boxes().isEmpty(); });
    }

    QStringList names() const {
        return textsOf(map_->boxes(), [](const MapBox& it) { return it.name; });
    }
    QPoint middleOf(const QString& name) const {
        return map_->places()[names().indexOf(name)].center();
    }
    void press(Qt::Key key) { QTest::keyClick(map_, key); }
    QString chosen() const { return map_->chosenBox() ? map_->chosenBox()->name : QString(); }
    void goInto(const QString& theme) {
        QTest::mouseDClick(map_, Qt::LeftButton, {}, middleOf(theme));
        until([this] { return label(u"place"_s).startsWith(u"全部主题 ›"_s); });
    }

    Form38* window_ = nullptr;
    MapView* map_ = nullptr;
};

TEST_F(Form38Test, AThemeIsMarkedInTheMainWindowAndItsStocksAreReachedAndLeft) {
    EXPECT_EQ(names(), QStringList({u"白酒"_s, u"银行"_s}));
    QTest::mouseClick(map_, Qt::LeftButton, {}, middleOf(u"银行"_s));
    EXPECT_EQ(globals_.dangqianzhuti, u"银行"_s);
    const ResultGrid& themes = gridOf(*child<GridView>(&main_, u"MSHFlexGrid1"_s));
    EXPECT_EQ(themes.textMatrix(themes.markedRow(), 1), u"银行"_s);
    EXPECT_EQ(gridOf(*child<GridView>(&main_, u"MSHFlexGrid2"_s)).rows(), 3);
    press(Qt::Key_Return);
    until([this] { return names().contains(u"浦发银行"_s); });
    EXPECT_EQ(label(u"place"_s), u"全部主题 › 银行　2 只"_s);
    QTest::mouseDClick(map_, Qt::LeftButton, {}, middleOf(u"招商银行"_s));
    press(Qt::Key_F6);
    EXPECT_TRUE(shownWindow<Form21>() && shownWindow<Form36>());
    press(Qt::Key_Backspace);
    until([this] { return names().size() == 2 && names().contains(u"白酒"_s); });
    EXPECT_EQ(chosen(), u"银行"_s) << "where it was left";
}

TEST_F(Form38Test, TheMenusAreThoseOfTheMainWindowAndActOnTheBox) {
    const QPoint wine = middleOf(u"白酒"_s);
    QTest::mouseClick(map_, Qt::RightButton, {}, wine);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, wine, map_->mapToGlobal(wine));
    QCoreApplication::sendEvent(map_, &menu);
    const QStringList words = popup();
    EXPECT_EQ(words.value(0), u"进入主题"_s);
    EXPECT_TRUE(words.contains(u"修改关注度"_s) && !words.contains(u"导出表格…"_s));
    globals_.dangqianzhuti.clear();  // as an editor does that takes it over
    QContextMenuEvent key(QContextMenuEvent::Keyboard, {}, {});
    QCoreApplication::sendEvent(map_, &key);
    EXPECT_EQ(globals_.dangqianzhuti, u"白酒"_s);
    dialogs_.typed = u"7"_s;
    child<QAction>(&main_, u"修改关注度"_s)->trigger();
    popup();
    until([this] { return map_->boxes().value(0).attention == 7; });
    goInto(u"银行"_s);
    press(Qt::Key_Home);
    QCoreApplication::sendEvent(map_, &key);
    const QStringList onStock = popup();
    EXPECT_TRUE(onStock.contains(u"添加个股监控"_s) && onStock.contains(u"K线图"_s));
    EXPECT_TRUE(onStock.contains(u"为该主题删除个股"_s));
    EXPECT_EQ(globals_.dangqiandm + globals_.dangqianzhuti, u"SH600000银行"_s);
}

TEST_F(Form38Test, ItFollowsTheQuotesAndAThemeThatGoesLeadsBack) {
    answerQuotes({{u"sh600000"_s, 20}, {u"sh600519"_s, 15}});
    goInto(u"银行"_s);
    map_->chooseKey(u"SH600000"_s);
    child<QAction>(&main_, u"gengxin"_s)->trigger();
    until([this] { return map_->boxes().value(0).gain == 100; });
    EXPECT_EQ(chosen(), u"浦发银行"_s) << "the choice stays";
    store_.run({u"delete from dzhzhuti where zhutiname='银行'"_s});
    child<QAction>(&main_, u"刷新"_s)->trigger();
    until([this] { return names() == QStringList{u"白酒"_s}; });
    EXPECT_EQ(label(u"place"_s), u"全部主题　1 个"_s);
    EXPECT_EQ(failures_.texts, QStringList());
}

TEST_F(Form38Test, KeysWalkAndFindAndToolsAreToldEachBox) {
    window_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window_));
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(map_);
    press(Qt::Key_Home);
    EXPECT_EQ(chosen(), u"银行"_s) << "the greatest";
    press(Qt::Key_End);
    EXPECT_EQ(chosen(), u"白酒"_s);
    press(Qt::Key_Left);
    EXPECT_EQ(chosen(), u"银行"_s);
    QTest::keyClicks(map_, u"bj"_s);
    EXPECT_EQ(chosen(), u"白酒"_s) << "by its initials";
    EXPECT_TRUE(list->role() == QAccessible::List && list->childCount() == 2);
    const QAccessibleInterface* box = list->focusChild();
    EXPECT_EQ(box->text(QAccessible::Name), u"白酒"_s);
    EXPECT_TRUE(box->text(QAccessible::Description).startsWith(u"-1.00%"_s));
    EXPECT_TRUE(box->state().focused && box->role() == QAccessible::ListItem);
    list->child(1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    until([this] { return names().contains(u"招商银行"_s); });
}

}  // namespace guanchao
