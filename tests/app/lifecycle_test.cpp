#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QScopeGuard>

#include "app/maintenance.h"
#include "store/store_error.h"
#include "tests/support/fakes.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

class LifecycleTest : public ::testing::Test {
protected:
    TestStores store_;
    FakeDialogs dialogs_;
};

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
