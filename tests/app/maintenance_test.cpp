#include <QScopeGuard>

#include "app/maintenance.h"
#include "tests/support/store_test.h"

namespace guanchao {

using MaintenanceTest = StoreTest;

TEST_F(MaintenanceTest, TheActionTakesTheOldKeyAway) {
    const QByteArray home = qgetenv("HOME");
    qputenv("HOME", store_.folder().chopped(1).toUtf8());
    const auto restoreHome = qScopeGuard([&] { qputenv("HOME", home); });
    EXPECT_THROW(clearMaintenanceKey(dialogs_), StoreError) << "no such file";
    ASSERT_TRUE(QDir(store_.folder()).mkpath(u"dzhzhuti"_s));
    const QString path = store_.folder() + u"dzhzhuti/dzhzhuti2.db3"_s;
    createStore(path, u"another"_s, u"create table a(b);"_s);
    EXPECT_THROW(clearMaintenanceKey(dialogs_), StoreError) << "of another key";
    QFile::remove(path);
    createStore(path, u"kqmt20190725bvdn"_s, u"create table a(b);insert into a values(7);"_s);
    clearMaintenanceKey(dialogs_);
    EXPECT_EQ(told(), QStringList{u"观潮台| 设置密码完成！"_s});
    EXPECT_EQ(TestStores::rows({path, {}}, u"select b from a"_s), QStringList{u"7"_s});
    clearMaintenanceKey(dialogs_);
    EXPECT_EQ(told(), QStringList{u"观潮台|文件 "_s + path + u" 没有密码，不用再取消。"_s});
}

}  // namespace guanchao
