#include "exchange/form3.h"

#include <QRadioButton>
#include <QThreadPool>

#include "platform/home_places.h"
#include "tests/support/window_test.h"

namespace guanchao {

class Form3Test : public WindowTest {
protected:
    Form3Test() {
        services_.vendor.host = u"http://vendor"_s;
        globals_.yingyongmulu = store_.folder();
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 1, 1);
        writeFile(text_, u"600000\tX\t银行\r\n"_s.toUtf8());
        open<Form3>();
    }

    const QString text_ = store_.folder() + u"主题投资.txt"_s;
};

TEST_F(Form3Test, TheDialogsFillTheirFields) {
    const QString folder = homePath(HomePlace::exportFolder);
    click(u"Command8"_s);
    EXPECT_EQ(text(u"Text1"_s), folder + u"zhutibackup.ztb"_s);
    dialogs_.picked = u"/a/b.ztb"_s;
    click(u"Command8"_s);
    click(u"Command6"_s);
    EXPECT_EQ(text(u"Text1"_s) + text(u"Text4"_s), u"/a/b.ztb/a/b.ztb"_s);
    EXPECT_EQ(dialogs_.shown.first(), u"请选择主题库文件|"_s + folder + u"|zhutibackup.ztb"_s);
    EXPECT_EQ(dialogs_.shown.last(), u"请选择主题txt文件|"_s + folder + u"|主题投资.txt"_s);
    click(u"Command7"_s);
    emit find<QLabel>(u"Label11"_s)->linkActivated(u"forum"_s);
    EXPECT_EQ(shell_.opened, QStringList({store_.folder() + u"主题txt文件示例.txt"_s,
                                          u"http://vendor/chaoxin/zhutiluntan.htm"_s}));
}

TEST_F(Form3Test, PreviewAndImportTakeWhatTheControlsSay) {
    edit(u"Text4"_s)->setText(text_);
    find<QRadioButton>(u"Option1"_s)->click();
    find<QRadioButton>(u"Option2"_s)->click();
    click(u"Command3"_s);
    EXPECT_EQ(grid().rows(), 3);
    EXPECT_EQ(grid().textMatrix(2, 2), u"银行"_s);
    find<QComboBox>(u"Combo1"_s)->setEditText(u"|"_s);
    click(u"Command3"_s);
    EXPECT_EQ(dialogs_.shown.last(), u"观潮台|第一行没有找到间隔!间隔：|"_s);
    find<QComboBox>(u"Combo1"_s)->setEditText(u"TAB键"_s);
    {
        const Connection other = held(stores_.main, u"immediate"_s);
        click(u"Command4"_s);
        ASSERT_TRUE(QTest::qWaitFor([this] { return label(u"Label1"_s) == u"浦发银行"_s; }));
        EXPECT_FALSE(button(u"Command4"_s)->isEnabled());
        EXPECT_TRUE(find<QProgressBar>(u"progress"_s)->isVisible());
        edit(u"Text1"_s)->setText(text_);
        click(u"Command2"_s);
        EXPECT_EQ(failures_.texts, QStringList{u"另一次导入或导出正在进行，请等它结束。"_s});
        EXPECT_FALSE(button(u"Command4"_s)->isEnabled())
            << "the refused run leaves the first alone";
    }
    ASSERT_TRUE(QTest::qWaitFor([this] { return button(u"Command4"_s)->isEnabled(); }));
    EXPECT_EQ(dialogs_.shown.last(),
              u"观潮台|导入文本主题库完成，共导入新的数据：2条\n文件按 UTF-8 读取。"_s);
    for (const bool agrees : {false, true}) {
        dialogs_.answer = agrees;
        click(u"Command5"_s);
        EXPECT_EQ(store_.rows(u"select dm from dzhzhuti"_s).size(), agrees ? 0 : 2);
        EXPECT_EQ(button(u"undo"_s)->isVisible(), agrees);
    }
    click(u"undo"_s);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !button(u"undo"_s)->isVisible(); }));
    EXPECT_EQ(store_.rows(u"select dm from dzhzhuti"_s).size(), 2);
}

TEST_F(Form3Test, ARunEndsByItsButtonByEscAndWithItsWindow) {
    edit(u"Text4"_s)->setText(text_);
    form_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form_));
    const std::function<void()> ends[] = {
        [this] { click(u"stopRun"_s); },
        [this] { QTest::keyClick(form_.data(), Qt::Key_Escape); },
        [] { leaveWindows(); },
    };
    for (const auto& end : ends) {
        Connection other = held(stores_.main, u"immediate"_s);
        click(u"Command4"_s);
        ASSERT_TRUE(QTest::qWaitFor([this] { return !label(u"Label1"_s).isEmpty(); }));
        end();
        other.execute(u"rollback"_s);
        EXPECT_TRUE(
            QTest::qWaitFor([this] { return !form_ || !button(u"stopRun"_s)->isVisible(); }));
    }
    EXPECT_TRUE(form_.isNull());
    QThreadPool::globalInstance()->waitForDone();
    EXPECT_EQ(dialogs_.shown, QStringList(2, u"观潮台|导入已停止，没有导入任何数据。"_s));
    EXPECT_EQ(store_.rows(u"select count(*) from dzhzhuti"_s), QStringList{u"0"_s});
}

}  // namespace guanchao
