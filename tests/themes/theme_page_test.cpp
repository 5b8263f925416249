#include "themes/theme_page.h"

#include "articles/form26.h"
#include "articles/form27.h"
#include "market/form21.h"
#include "monitor/form4.h"
#include "monitor/form7.h"
#include "monitor/form8.h"
#include "tests/app/form2_fixture.h"
#include "tests/support/test_history.h"

namespace guanchao {

class ThemePageTest : public Form2Test {
protected:
    ThemePageTest() {
        writeQuietHistory(stores_, store_.folder());
        store_.addArticle(u"'2026-11-03','某','主题','银行','年报','…'"_s);
        store_.run(
            {u"insert into gegujiankong values('SH600000','浦发银行',10,2,'股价','<',9,null,1,"
             u"'')"_s,
             u"insert into zhutijiankong values('银行',2,'>',5,1,null,1,'')"_s});
        load();
    }

    void openPage() {
        GridView& themes = *child<GridView>(&main_, u"MSHFlexGrid1"_s);
        clickCell(themes, 1, 1);
        QTest::mouseDClick(themes.viewport(), Qt::LeftButton, {}, cellOf(themes, 1, 1));
        form_ = shownWindow<ThemePage>();
        ASSERT_NE(form_.data(), nullptr);
        until([this] { return grid().rows() == 2 && grid(u"MSHFlexGrid3"_s).rows() == 3; });
        until([this] { return !label(u"source"_s).startsWith(u"正在"_s); });
    }
    void enter(const QString& name, int row) {
        clickCell(view(name), row, 1);
        QTest::keyClick(&view(name), Qt::Key_Return);
    }
    QString gains() const { return find<QLabel>(u"gains"_s)->accessibleName(); }
};

TEST_F(ThemePageTest, ADoubleClickOnTheNameShowsAllAboutItWithTheWayToEachWindow) {
    openPage();
    EXPECT_EQ(label(u"theme"_s), u"银行"_s);
    EXPECT_EQ(gains(), u"今天 +2.00%，5日 没有，20日 没有，60日 没有"_s);
    EXPECT_TRUE(label(u"source"_s).startsWith(u"没有存下"_s));
    const std::tuple<QString, int, std::function<QWidget*()>> rows[] = {
        {u"MSHFlexGrid1"_s, 1, [] { return shownWindow<Form21>(); }},
        {u"MSHFlexGrid2"_s, 1, [] { return shownWindow<Form26>(); }},
        {u"MSHFlexGrid3"_s, 1, [] { return shownWindow<Form8>(); }},
        {u"MSHFlexGrid3"_s, 2, [] { return shownWindow<Form7>(); }}};
    for (const auto& [name, row, opened] : rows) {
        enter(name, row);
        EXPECT_NE(opened(), nullptr) << name.toStdString() << row;
    }
    EXPECT_EQ(shownWindow<Form7>()->windowTitle(), u"修改个股监控"_s);
    clickCell(view(), 1, 1, Qt::RightButton);
    EXPECT_TRUE(popup().contains(u"添加个股监控"_s));
    EXPECT_EQ(globals_.dangqiandm + globals_.dangqianzhuti, u"SH600000银行"_s);
}

TEST_F(ThemePageTest, ItFollowsTheQuotesAndTellsWhereItsThemeHasGone) {
    openPage();
    answerQuotes({{u"sh600000"_s, 20}, {u"sh600519"_s, 15}});
    child<QAction>(&main_, u"gengxin"_s)->trigger();
    until([this] { return gains().startsWith(u"今天 +100.00%"_s); });
    globals_.dangqianzhuti = u"银行"_s;
    dialogs_.typed = u"大银行"_s;
    child<QAction>(&main_, u"修改主题名称"_s)->trigger();
    until([this] { return find<QWidget>(u"goneRow"_s)->isVisible(); });
    EXPECT_EQ(label(u"gone"_s),
              u"主题“银行”已经没有了：改了名称或被删除。它的股票现在都在主题“大银行”里。"_s);
    button(u"Command7"_s)->click();
    until([this] { return grid().rows() == 2; });
    EXPECT_EQ(label(u"theme"_s), u"大银行"_s);
    EXPECT_FALSE(find<QWidget>(u"goneRow"_s)->isVisible());
    globals_.dangqianzhuti = u"大银行"_s;
    child<QAction>(&main_, u"删除主题"_s)->trigger();
    until([this] { return find<QWidget>(u"goneRow"_s)->isVisible(); });
    EXPECT_FALSE(button(u"Command7"_s)->isVisible()) << "nowhere";
    EXPECT_EQ(failures_.texts, QStringList());
}

TEST_F(ThemePageTest, AStoreThatCannotBeReadKeepsNothingElseAway) {
    QFile::remove(stores_.article.path);
    QFile::remove(stores_.heat.path);
    globals_.dangqianzhuti = u"银行"_s;
    openBy<ThemePage>(&main_, u"主题页"_s);
    until([this] { return find<QLabel>(u"articlesNote"_s)->isVisible(); });
    until([this] { return find<QLabel>(u"newsNote"_s)->isVisible(); });
    EXPECT_TRUE(label(u"articlesNote"_s).startsWith(u"读不到："_s));
    until([this] { return grid().rows() == 2 && grid(u"MSHFlexGrid3"_s).rows() == 3; });
    EXPECT_EQ(failures_.texts, QStringList());
}

}  // namespace guanchao
