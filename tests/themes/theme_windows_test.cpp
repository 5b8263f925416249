#include <QPlainTextEdit>

#include "tests/support/window_test.h"
#include "themes/form22.h"
#include "themes/form6.h"

namespace guanchao {

class ThemeWindowsTest : public WindowTest {
protected:
    ThemeWindowsTest() {
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 10, 1);
        store_.addCode(u"SH600519"_s, u"贵州茅台"_s, 10, 2);
        store_.addMember(u"白酒"_s, u"SH600519"_s, 7);
    }
};

TEST_F(ThemeWindowsTest, Form6ClosesOnlyWhenItsRunIsDone) {
    globals_.dangqianzhuti = u"白酒"_s;
    open<Form6>();
    QApplication::processEvents();
    auto* codes = find<QPlainTextEdit>(u"Text1"_s);
    EXPECT_EQ(text(u"Text2"_s) + codes->toPlainText() + text(u"Text3"_s), u"白酒SH600519,7"_s);
    edit(u"Text2"_s)->clear();
    click(u"Command2"_s);
    EXPECT_TRUE(form_ && form_->isVisible()) << "no name";
    edit(u"Text2"_s)->setText(u"银行"_s);
    QTest::keyClick(codes, Qt::Key_Return);
    EXPECT_FALSE(form_ && form_->isVisible()) << "Enter adds, in the list of codes too";
    EXPECT_EQ(store_.rows(u"select dm,guanzhudu from dzhzhuti where zhutiname='银行'"_s),
              QStringList{u"SH600519|7"_s});
}

TEST_F(ThemeWindowsTest, Form22FollowsItsStock) {
    globals_.dangqiandm = u"SH600519"_s;
    globals_.dangqianjc = u"贵州茅台"_s;
    open<Form22>();
    QApplication::processEvents();
    EXPECT_EQ(form_->windowTitle() + label(u"Label7"_s), u"贵州茅台_属于主题贵州茅台"_s);
    edit(u"Text1"_s)->setText(u" sh600000 "_s);
    click(u"Command9"_s);
    EXPECT_EQ(told(), QStringList{u"观潮台| 此代码没有找到主题!"_s});
    edit(u"Text1"_s)->setText(u" sh600519 "_s);
    click(u"Command9"_s);
    EXPECT_EQ(text(u"Text1"_s), u"SH600519"_s);
    clickCell(view(), 1, 1, Qt::RightButton);
    EXPECT_FALSE(popup().isEmpty());
    const auto join = [this](const QString& theme) {
        clickCell(view(), 1, 1);
        dialogs_.typed = theme;
        trigger(u"添加到主题"_s);
    };
    join({});
    join(u"白酒"_s);
    EXPECT_EQ(told().last(), u"观潮台|已加入过该主题!"_s);
    dialogs_.onInput = [this] { globals_.dangqiandm = u"SH600000"_s; };  // by another window
    join(u" 消'费 "_s);
    EXPECT_EQ(store_.rows(u"select * from dzhzhuti where zhutiname!='白酒'"_s),
              QStringList{u"消'费|SH600519|贵州茅台|2026-11-24 00:00:00|5|0"_s});
    EXPECT_EQ(grid().rows(), 3);
    store_.run({u"delete from dmb"_s});
    join(u"新"_s);
    EXPECT_EQ(failures_.texts.size(), 1) << "no short name to be had";
    clickCell(view(), 1, 1);
    trigger(u"从该主题删除"_s);
    EXPECT_EQ(grid().rows(), 2);
}

}  // namespace guanchao
