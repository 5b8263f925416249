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
        EXPECT_EQ(globals_.jintian, QDate(2026, 11, 24));
        EXPECT_EQ(globals_.hqmang, 0);
        EXPECT_EQ(globals_.wenzhangdalei, QString());
        steps_ << u"refresh"_s;
    });
    EXPECT_EQ(desktopTray_.calls, QStringList({u"add"_s, u"tip 右键弹出菜单"_s}));
    EXPECT_EQ(steps_, QStringList{u"refresh"_s});
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

}  // namespace guanchao
