#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

#include "grid/grid_view.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_environment.h"
#include "themes/form22.h"
#include "themes/form30.h"
#include "themes/form6.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

class ThemeWindowsTest : public ::testing::Test, protected TestEnvironment {
protected:
    ThemeWindowsTest() {
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 10, 1);
        store_.addCode(u"SH600519"_s, u"贵州茅台"_s, 10, 2);
        store_.addMember(u"白酒"_s, u"SH600519"_s, 7);
    }

    template <typename Form>
    QPointer<Form> open() {
        windows_.openAnew<Form>();
        QApplication::processEvents();
        return shownWindow<Form>();
    }

    static ResultGrid& gridOf(QWidget* form) {
        return *static_cast<ResultGrid*>(form->findChild<GridView*>()->model());
    }

    static void closePopup() {
        QWidget* menu = QApplication::activePopupWidget();
        ASSERT_TRUE(menu);
        menu->close();
    }
};

TEST_F(ThemeWindowsTest, Form6ClosesOnlyWhenItsRunIsDone) {
    globals_.dangqianzhuti = u"白酒"_s;
    const QPointer<Form6> form = open<Form6>();
    ASSERT_TRUE(form);
    auto* codes = form->findChild<QPlainTextEdit*>(u"Text1"_s);
    auto* name = form->findChild<QLineEdit*>(u"Text2"_s);
    EXPECT_EQ(name->text() + u'|' + codes->toPlainText() + u'|' +
                  form->findChild<QLineEdit*>(u"Text3"_s)->text(),
              u"白酒|SH600519,|7"_s);
    codes->setPlainText(u"示例:sh600000,sz000001,sh600000"_s);
    QTest::mouseClick(codes->viewport(), Qt::LeftButton);
    EXPECT_EQ(codes->toPlainText(), u",sh600000"_s);
    name->clear();
    form->findChild<QPushButton*>(u"Command2"_s)->click();
    EXPECT_TRUE(form && form->isVisible()) << "no name";
    name->setText(u"银行"_s);
    QTest::keyClick(codes, Qt::Key_Return);
    EXPECT_FALSE(form && form->isVisible()) << "Enter adds, in the list of codes too";
    EXPECT_EQ(store_.rows(u"select dm,guanzhudu from dzhzhuti where zhutiname='银行'"_s),
              QStringList{u"SH600000|7"_s});
}

TEST_F(ThemeWindowsTest, Form22FollowsItsStock) {
    globals_.dangqiandm = u"SH600519"_s;
    globals_.dangqianjc = u"贵州茅台"_s;
    const QPointer<Form22> form = open<Form22>();
    ASSERT_TRUE(form);
    EXPECT_EQ(form->windowTitle(), u"贵州茅台_属于主题"_s);
    clickCell(*form->findChild<GridView*>(), 1, 1, Qt::RightButton);
    closePopup();
    EXPECT_EQ(globals_.dangqiandm + globals_.dangqianjc, u"SH600519白酒"_s);
    dialogs_.typed = u"消费"_s;
    form->findChild<QAction*>(u"添加到主题"_s)->trigger();
    EXPECT_EQ(gridOf(form).rows(), 3);
    clickCell(*form->findChild<GridView*>(), 1, 1, Qt::LeftButton);
    form->findChild<QAction*>(u"从该主题删除"_s)->trigger();
    EXPECT_EQ(gridOf(form).rows(), 2);
}

TEST_F(ThemeWindowsTest, Form30KeepsItsPlaceThroughARefill) {
    for (int at = 0; at < 100; ++at) {
        const QString dm = u"SZ"_s + QString::number(300000 + at);
        store_.addCode(dm, u"股"_s + QString::number(at), 10, -at);
        store_.run({u"insert into zixuangu(dm) values('"_s + dm + u"')"_s});
    }
    const QPointer<Form30> form = open<Form30>();
    ASSERT_TRUE(form);
    auto* scrollBar = form->findChild<GridView*>()->verticalScrollBar();
    scrollBar->setValue(50);
    clickCell(*form->findChild<GridView*>(), 60, 1, Qt::RightButton);
    closePopup();
    EXPECT_EQ(globals_.dangqiandm + globals_.dangqianjc, u"SZ300059股59"_s);
    form->findChild<QAction*>(u"从自选股删除"_s)->trigger();
    QApplication::processEvents();
    EXPECT_EQ(gridOf(form).rows(), 100);
    EXPECT_EQ(scrollBar->value(), 50);
    dialogs_.typed = u"sh600519"_s;
    form->findChild<QAction*>(u"添加自选股"_s)->trigger();
    EXPECT_EQ(gridOf(form).textMatrix(1, 1), u"SH600519"_s);
}

}  // namespace guanchao
