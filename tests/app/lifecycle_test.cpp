#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QScopeGuard>

#include "app/maintenance.h"
#include "app/shutdown.h"
#include "app/startup.h"
#include "store/failure.h"
#include "store/store_error.h"
#include "tests/support/fakes.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

static QString contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

class LifecycleTest : public ::testing::Test {
protected:
    TestStores store_;
    Globals globals_;
    FakeClock clock_;
    FakeDialogs dialogs_;
    FakeProcesses processes_;
    FakeTray desktopTray_;
    TrayModule tray_{desktopTray_, globals_};
    QStringList steps_;
};

TEST_F(LifecycleTest, TheLoadSetsEveryValueBeforeTheFirstRefresh) {
    globals_.hqmang = 1;
    globals_.wenzhangdalei = u"主题"_s;
    Stores stores;
    loadProgram(store_.folder().chopped(1), tray_, globals_, stores, clock_, [&] {
        EXPECT_EQ(globals_.yingyongmulu, store_.folder());
        EXPECT_EQ(stores.main.path, store_.folder() + u"dzhzhuti.mzdat"_s);
        EXPECT_EQ(stores.main.key, QString());
        EXPECT_EQ(stores.pinyin.path, store_.folder() + u"py.mzdat"_s);
        EXPECT_EQ(stores.heat.key.size(), 16);
        EXPECT_EQ(stores.article.key.size(), 15);
        EXPECT_EQ(stores.article.key, stores.backupKey);
        EXPECT_EQ(globals_.jintian, QDate(2026, 11, 24));
        EXPECT_EQ(globals_.hqmang, 0);
        EXPECT_EQ(globals_.wenzhangdalei, QString());
        steps_ << u"refresh"_s;
    });
    EXPECT_EQ(desktopTray_.calls, QStringList({u"add"_s, u"tip 右键弹出菜单"_s}));
    EXPECT_EQ(steps_, QStringList{u"refresh"_s});
}

TEST_F(LifecycleTest, TheApplicationFolderEndsInOneSeparator) {
    EXPECT_EQ(applicationFolder(u"/"_s), u"/"_s);
    EXPECT_EQ(applicationFolder(u"/opt/程序"_s), u"/opt/程序/"_s);
    EXPECT_EQ(applicationFolder(u"/opt/程序//"_s), u"/opt/程序/"_s);
}

TEST_F(LifecycleTest, ClosingAsksUnlessTheTrayMenuSaidExit) {
    dialogs_.answer = false;
    EXPECT_EQ(answerClose(0, dialogs_), CloseAnswer::hideInTray);
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|点“确定”退出，点“取消”进入托盘。"_s});
    EXPECT_EQ(answerClose(1, dialogs_), CloseAnswer::shutDown);
    EXPECT_EQ(dialogs_.shown.size(), 1);
    dialogs_.answer = true;
    EXPECT_EQ(answerClose(0, dialogs_), CloseAnswer::shutDown);
}

TEST_F(LifecycleTest, ShutdownKeepsItsOrder) {
    globals_.yingyongmulu = store_.folder();
    shutDown(
        store_.stores, u"guanchaotai2"_s, tray_, processes_,
        [&] {
            EXPECT_EQ(TestStores::rows(store_.stores.heat, u"select mainisrun from canshu"_s),
                      QStringList{u"0"_s});
            EXPECT_TRUE(desktopTray_.calls.isEmpty());
            steps_ << u"close"_s;
        },
        [&](const std::exception&) { steps_ << u"failure"_s; });
    EXPECT_EQ(steps_, QStringList{u"close"_s});
    EXPECT_EQ(desktopTray_.calls, QStringList{u"remove"_s});
    EXPECT_EQ(contentOf(store_.folder() + u"read.ini"_s), u"[read]\njintuopan=0\n"_s);
    EXPECT_EQ(processes_.ended, QStringList({u"guanchaotai.exe"_s, u"this"_s}));
}

TEST_F(LifecycleTest, ShutdownGoesOnWithoutTheHeatStore) {
    QFile::remove(store_.stores.heat.path);
    globals_.yingyongmulu = store_.folder();
    shutDown(
        store_.stores, u"guanchaotai"_s, tray_, processes_, [&] { steps_ << u"close"_s; },
        [&](const std::exception& failure) { steps_ << failureText(failure); });
    ASSERT_EQ(steps_.size(), 2);
    EXPECT_TRUE(steps_[0].startsWith(u"通知采集程序退出没有完成。\n\n找不到数据文件 "_s));
    EXPECT_EQ(processes_.ended, QStringList({u"guanchaotai.exe"_s, u"this"_s}));
}

TEST_F(LifecycleTest, TheTrayHidesOnlyWhereThereIsOneAndSaysOnceIfThereIsNone) {
    EXPECT_TRUE(tray_.hide(dialogs_));
    EXPECT_EQ(tray_.hidden(), 1);
    tray_.show();
    EXPECT_EQ(tray_.hidden(), 0);
    EXPECT_TRUE(dialogs_.shown.isEmpty());
    desktopTray_.isThere = false;
    for (int time = 0; time < 2; ++time) {
        EXPECT_FALSE(tray_.hide(dialogs_));
        EXPECT_EQ(tray_.hidden(), 0);
        EXPECT_EQ(dialogs_.shown,
                  QStringList{u"观潮台|这个桌面没有托盘，窗口改为最小化，监控照常运行。"_s});
    }
}

TEST_F(LifecycleTest, TheMaintenanceActionTakesTheOldKeyAway) {
    const QByteArray home = qgetenv("HOME");
    qputenv("HOME", store_.folder().chopped(1).toUtf8());
    const auto restoreHome = qScopeGuard([&] { qputenv("HOME", home); });
    EXPECT_THROW(clearMaintenanceKey(dialogs_), StoreError) << "no such file";
    ASSERT_TRUE(QDir(store_.folder()).mkpath(u"dzhzhuti"_s));
    const QString path = store_.folder() + u"dzhzhuti/dzhzhuti2.db3"_s;
    createStore(path, u"kqmt20190725bvdn"_s, u"create table a(b);insert into a values(7);"_s);
    clearMaintenanceKey(dialogs_);
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台| 设置密码完成！"_s});
    EXPECT_EQ(TestStores::rows({path, {}}, u"select b from a"_s), QStringList{u"7"_s});
    EXPECT_THROW(clearMaintenanceKey(dialogs_), StoreError) << "the key is gone already";
    EXPECT_EQ(dialogs_.shown.size(), 1);
}

TEST_F(LifecycleTest, AFailureNamesItsCauseInChinese) {
    const Activity activity(u"更新行情数据"_s);
    const QString path = store_.stores.main.path;
    const struct {
        StoreFault fault;
        QString path, part;
    } cases[] = {
        {StoreFault::busy, path, u"正被其他程序占用"_s},
        {StoreFault::notADatabase, path, u"密码不对"_s},
        {StoreFault::full, path, u"磁盘已满"_s},
        {StoreFault::readOnly, path, u"没有写入的权限"_s},
        {StoreFault::unreadable, path, u"无法读写"_s},
        {StoreFault::damaged, path, u"已损坏"_s},
        {StoreFault::other, path, u"执行语句失败。\n原因：words of the library"_s},
        {StoreFault::unreadable, u"/nowhere/x"_s, u"找不到数据文件 /nowhere/x"_s},
    };
    for (const auto& it : cases) {
        const QString text =
            failureText(StoreError(u"words of the library"_s, it.path, u"select 1"_s, it.fault));
        EXPECT_TRUE(text.startsWith(u"更新行情数据没有完成。"_s));
        EXPECT_TRUE(text.contains(it.part)) << text.toStdString();
    }
    EXPECT_TRUE(failureText(std::runtime_error("x")).startsWith(u"操作没有完成。"_s));
    {
        const Activity::Pause pause;
        EXPECT_TRUE(failureText(StoreError(u"x"_s, path, {})).startsWith(u"操作没有完成。"_s));
    }
    EXPECT_TRUE(failureText(StoreError(u"x"_s, path, {})).startsWith(u"更新行情数据"_s));
}

}  // namespace guanchao
