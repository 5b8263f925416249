#include "store/failure.h"

#include "base/files.h"
#include "store/store_error.h"
#include "tests/support/test_stores.h"

namespace guanchao {

TEST(FailureTest, NamesItsCauseInChinese) {
    const TestStores store;
    const QString path = store.stores.main.path;
    EXPECT_TRUE(failureText(StoreError(u"x"_s, path, {})).startsWith(u"操作没有完成。"_s));
    const Activity activity(u"更新行情数据"_s);
    const std::tuple<StoreFault, QString, QString> cases[] = {
        {StoreFault::busy, path, u"正被其他程序占用"_s},
        {StoreFault::notADatabase, path, u"密码不对，请用“数据”菜单的“恢复…”"_s},
        {StoreFault::full, path, u"磁盘已满，请腾出空间后再做"_s},
        {StoreFault::readOnly, path, u"没有写入的权限"_s},
        {StoreFault::unreadable, path, u"无法读写"_s},
        {StoreFault::damaged, path, u"“恢复…”换上每天的备份"_s},
        {StoreFault::damaged, u"/听涛阁/hangqing2006-2017.db3"_s, u"请换上完好的文件"_s},
        {StoreFault::other, path, u"执行语句失败。\n原因：words of the library"_s},
        {StoreFault::unreadable, u"/nowhere/x"_s, u"找不到数据文件 /nowhere/x"_s},
        {StoreFault::unreadable, u"/x/dzhzhuti.mzdat"_s, u"mzdat。请用“数据”菜单的“恢复…”"_s},
    };
    for (const auto& [fault, file, part] : cases) {
        const QString text =
            failureText(StoreError(u"words of the library"_s, file, u"select 1"_s, fault));
        EXPECT_TRUE(begins(text, u"更新行情数据没有完成。"_s));
        EXPECT_TRUE(holds(text, part));
        EXPECT_EQ(text.contains(u"words of the library"_s), fault == StoreFault::other);
    }
    EXPECT_TRUE(failureText(StoreError(u"表 dmb 的一行"_s, path, {}, StoreFault::full))
                    .endsWith(u"原因：表 dmb 的一行\n\n这一步没有写入任何数据。"_s));
}

TEST(FailureTest, TheSystemsReasonIsToldInChinese) {
    QFile full(u"/dev/full"_s);
    ASSERT_TRUE(full.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    EXPECT_LT(full.write("x"), 1);
    EXPECT_EQ(reasonOf(full), u"磁盘已满"_s);
}

}  // namespace guanchao
