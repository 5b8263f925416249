#include "exchange/form35.h"

#include "platform/qt_http_client.h"
#include "tests/support/small_market.h"
#include "tests/support/window_test.h"

namespace guanchao {

class Form35Test : public WindowTest {
protected:
    Form35Test() {
        http_.client = std::make_unique<QtHttpClient>();
        services_.stockList = {market_.service()};
        store_.addCode(u"SH000001"_s, u"上证指数"_s, 1, 1);
        store_.addCode(u"SH600519"_s, u"老名字"_s, 1, 1);
        store_.addCode(u"SZ000001"_s, u"平安银行"_s, 1, 1);
    }

    void openRead() {
        open<Form35>();
        until([this] { return !label(u"summary"_s).isEmpty(); });
    }
    void untilEnd() {
        until([this] { return button(u"begin"_s)->isEnabled(); });
    }
    QStringList rows() const { return rowTexts(*find<QTreeWidget>(u"list"_s)); }

    SmallMarket market_{{{u"SH600519"_s, u"贵州茅台"_s},
                         {u"SZ000001"_s, u"平安银行"_s},
                         {u"SZ000002"_s, u"万科A"_s},
                         {u"BJ920799"_s, u"艾融软件"_s}}};
};

TEST_F(Form35Test, TellsWhatIsThereAndWhatHasChanged) {
    openRead();
    EXPECT_EQ(label(u"summary"_s),
              u"代码表里有沪深股票 2 只，北交所股票 0 只（没有勾选，不更新），其他代码 1 个。\n"
              u"还没有从名单更新过。"_s);
    http_.onGet = [this] { QTest::keyClick(form_, Qt::Key_Escape); };
    click(u"begin"_s);
    untilEnd();
    EXPECT_EQ(label(u"words"_s), u"已停止，代码表没有改变。"_s);
    EXPECT_TRUE(label(u"summary"_s).endsWith(u"还没有从名单更新过。"_s));
    http_.onGet = nullptr;
    QTest::keyClick(form_, Qt::Key_Return);
    EXPECT_FALSE(button(u"begin"_s)->isEnabled());
    untilEnd();
    EXPECT_EQ(rows(),
              QStringList({u"改名|SH600519|贵州茅台|老名字"_s, u"新加入|SZ000002|万科A|"_s}));
    EXPECT_TRUE(label(u"summary"_s).startsWith(u"代码表里有沪深股票 3 只，"_s));
    EXPECT_TRUE(label(u"summary"_s).endsWith(u"上次更新：2026-11-24 10:00:00"_s));
    EXPECT_TRUE(label(u"words"_s).startsWith(u"更新完成。"_s));
    QTest::keyClick(find<QCheckBox>(u"beijing"_s), Qt::Key_Space);
    openRead();
    EXPECT_TRUE(find<QCheckBox>(u"beijing"_s)->isChecked()) << "it is remembered";
    QTest::keyClick(button(u"begin"_s), Qt::Key_Space);
    untilEnd();
    EXPECT_EQ(rows(), QStringList{u"新加入|BJ920799|艾融软件|"_s});
}

}  // namespace guanchao
