#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QScopeGuard>

#include "app/maintenance.h"
#include "app/startup.h"
#include "store/store_error.h"
#include "tests/support/fakes.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

class LifecycleTest : public ::testing::Test {
protected:
    TestStores store_;
    Globals globals_;
    FakeClock clock_;
    FakeDialogs dialogs_;
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
