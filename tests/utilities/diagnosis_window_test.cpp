#include "utilities/diagnosis_window.h"

#include <QPlainTextEdit>

#include "platform/log_file.h"
#include "tests/support/users_secrets.h"
#include "tests/support/window_test.h"
#include "utilities/diagnosed_settings.h"

namespace guanchao {

class DiagnosisWindowTest : public WindowTest {
protected:
    QString shown() const { return find<QPlainTextEdit>(u"text"_s)->toPlainText(); }
    bool isDone() const { return button(u"save"_s)->isEnabled(); }
    void wait() {
        ASSERT_TRUE(QTest::qWaitFor([this] { return isDone(); }, 60000)) << shown().toStdString();
    }
};

TEST_F(DiagnosisWindowTest, WhatIsShownIsWhatIsSavedAndHoldsNothingOfTheUsers) {
    plantSecrets(store_);
    services_ = readServices(store_.folder() + u"services.ini"_s);
    EXPECT_EQ(settingLines(environment_).filter(u"被改过"_s), QStringList());
    services_.vendor.timeoutSeconds = 9;
    http_.answer = [](const QString&) { return secretWords.toUtf8(); };
    const LogFile log(store_.folder() + logOfProgram, clock_);
    open<DiagnosisWindow>();
    EXPECT_FALSE(button(u"copy"_s)->isEnabled());
    wait();
    const QString text = shown();
    for (const QString& part :
         {u"【屏幕和设置】"_s, u"【软件和系统】"_s, u"【应用文件夹】"_s, u"【数据库】"_s,
          u"【最近的失败】"_s, u"services.ini 在软件运行中被改过"_s, u"【各个网站的应答】"_s,
          u"行情 新浪 http://…：不通"_s, u"网站有 services.ini 里自己写的"_s}) {
        EXPECT_TRUE(holds(text, part));
    }
    EXPECT_EQ(secretsIn(text, stores_), QStringList()) << text.toStdString();
    EXPECT_EQ(secretsIn(QString::fromUtf8(contentOf(store_.folder() + logOfProgram)), stores_),
              QStringList());
    QTest::keyClick(button(u"copy"_s), Qt::Key_Space);
    EXPECT_EQ(clipboard_.texts, QStringList{text});
    dialogs_.picked = store_.folder() + u"out.txt"_s;
    QTest::keyClick(button(u"save"_s), Qt::Key_Space);
    EXPECT_EQ(QString::fromUtf8(contentOf(dialogs_.picked)), text);
    EXPECT_TRUE(label(u"words"_s).startsWith(u"已保存到 "_s));
    dialogs_.picked = u"/nowhere/x.txt"_s;
    click(u"save"_s);
    EXPECT_EQ(failures_.told.size(), 1);
    EXPECT_EQ(label(u"words"_s), QString());
    click(u"openLog"_s);
    EXPECT_EQ(shell_.opened, QStringList{store_.folder() + logOfProgram});
    QFile::remove(store_.folder() + u"caijiqi.ini"_s);
    EXPECT_TRUE(holds(settingLines(environment_).filter(u"搜索"_s).value(0), u"限时 15 秒"_s));
}

TEST_F(DiagnosisWindowTest, AStopOfTheFirstStoreLeavesTheOthersAndIsNoWait) {
    Connection holder = stores_.main.open();
    holder.execute(u"begin exclusive"_s);
    open<DiagnosisWindow>();
    ASSERT_TRUE(QTest::qWaitFor([this] { return shown().contains(u"【数据库】"_s); }, 60000));
    QTest::keyClick(button(u"stop"_s), Qt::Key_Space);
    wait();
    EXPECT_TRUE(shown().contains(u"主库 dzhzhuti.mzdat：停止了，没有检查完"_s));
    EXPECT_TRUE(shown().contains(u"文章库 wenzhang.mzdat：停止了，没有检查　"_s));
    EXPECT_TRUE(shown().contains(u"【最近的运行】"_s)) << "what is quick is there";
}

TEST_F(DiagnosisWindowTest, EscStopsTheCollectingAndThenClosesTheWindow) {
    services_.chart.host = u"http://silent"_s;
    http_.gate = std::make_shared<Later<bool>>();
    open<DiagnosisWindow>();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !http_.paths.isEmpty(); }, 60000));
    EXPECT_TRUE(find<QProgressBar>(u"progress"_s)->isVisible());
    EXPECT_EQ(label(u"step"_s), u"正在问 走势图 http://silent（0 / 1）"_s);
    const QString left = find<QProgressBar>(u"progress"_s)->text();
    EXPECT_TRUE(left.endsWith(u"最多还要 31 秒"_s)) << left.toStdString();
    QTest::keyClick(find<QWidget>(u"text"_s), Qt::Key_Escape);
    wait();
    EXPECT_TRUE(shown().endsWith(u"停止了，没有问完\n"_s));
    EXPECT_EQ(label(u"words"_s), u"停止了，收集到的都在上面。"_s);
    EXPECT_EQ(button(u"stop"_s)->text(), u"停止(&S)"_s);
    EXPECT_TRUE(form_->isVisible());
    QTest::keyClick(button(u"collect"_s), Qt::Key_Space);
    EXPECT_FALSE(isDone());
    leaveWindows();
    http_.gate->deliver(true);
    EXPECT_EQ(failures_.told, QStringList());
}

}  // namespace guanchao
