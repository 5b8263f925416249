#include "exchange/form33.h"

#include <QSignalSpy>
#include <QSpinBox>

#include "platform/qt_http_client.h"
#include "tests/support/small_market.h"
#include "tests/support/window_test.h"

namespace guanchao {

class Form33Test : public WindowTest {
protected:
    Form33Test() {
        http_.client = std::make_unique<QtHttpClient>();
        services_.boards = {market_.service()};
    }

    void openRead() {
        open<Form33>();
        until([this] { return button(u"reload"_s)->isEnabled(); });
    }
    QTreeWidget& list() const { return *find<QTreeWidget>(u"list"_s); }
    void importAll() {
        click(u"all"_s);
        click(u"begin"_s);
        until([this] { return button(u"all"_s)->isEnabled(); });
    }

    SmallMarket market_{
        {{u"SH600519"_s, u"贵州茅台"_s}, {u"SZ000001"_s, u"平安银行"_s}},
        {{u"白酒"_s, u"SH600519"_s}, {u"银行"_s, u"SH600519"_s}, {u"银行"_s, u"SZ000001"_s}}};
};

TEST_F(Form33Test, TheBoardsThatAreTickedBecomeThemes) {
    store_.addMember(u"银行"_s, u"SZ000001"_s);
    services_.boards.prepend({u"http://127.0.0.1:1"_s, {}, 10, 1, 0, u"eastmoney"_s});
    openRead();
    EXPECT_EQ(rowTexts(list()), QStringList({u"白酒|1|0|"_s, u"银行|2|1|"_s}));
    EXPECT_FALSE(button(u"begin"_s)->isEnabled());
    find<QSpinBox>(u"least"_s)->setValue(2);
    click(u"enough"_s);
    EXPECT_EQ(rowTexts(list()), QStringList({u"白酒|1|0|"_s, u"*银行|2|1|"_s}));
    edit(u"search"_s)->setText(u"白"_s);
    EXPECT_TRUE(list().topLevelItem(1)->isHidden());
    click(u"none"_s);
    EXPECT_EQ(label(u"ticked"_s), u"已勾选 1 个"_s) << "what the search hides stays";
    edit(u"search"_s)->clear();
    list().setCurrentItem(list().topLevelItem(1));
    QTest::keyClick(&list(), Qt::Key_Space);
    EXPECT_EQ(label(u"ticked"_s), u"已勾选 0 个"_s);
    const QSignalSpy imported(static_cast<Form33*>(form_.data()), &Form33::imported);
    importAll();
    EXPECT_GT(imported.count(), 0) << "by which the main window follows";
    EXPECT_EQ(rowTexts(list()), QStringList({u"白酒|1|1|新增 1 只"_s, u"银行|2|2|新增 1 只"_s}));
    EXPECT_TRUE(begins(label(u"words"_s), u"导入完成。导入了 2 个板块：新主题 1 个，新成份股"_s));
    EXPECT_EQ(store_.rows(u"select count(*) from dzhzhuti"_s), QStringList{u"3"_s});
}

TEST_F(Form33Test, TellsWhyThereIsNoList) {
    market_.stop();
    openRead();
    EXPECT_TRUE(label(u"words"_s).contains(u"新浪（"_s + market_.host() + u"）：连接不上"_s));
    EXPECT_TRUE(label(u"words"_s).contains(u"重新读取"_s));
    EXPECT_FALSE(button(u"all"_s)->isEnabled());
    services_.boards.clear();
    openRead();
    EXPECT_EQ(label(u"words"_s).trimmed(),
              u"没有读到板块列表：\n板块的网站都停用了，请在“工具 / 行情来源”里启用"_s);
}

TEST_F(Form33Test, APauseTellsThatTheBoardIsReadToItsEnd) {
    openRead();
    http_.client = nullptr;
    const auto held = std::make_shared<Later<bool>>();
    http_.gate = held;
    click(u"all"_s);
    click(u"begin"_s);
    const auto step = [this] { return label(u"step"_s).section(u'（', 0, 0); };
    EXPECT_EQ(step(), u"正在导入 白酒"_s);
    click(u"pause"_s);
    EXPECT_EQ(step(), u"读完这个板块就暂停"_s);
    click(u"pause"_s);
    EXPECT_EQ(step(), u"正在导入 白酒"_s) << "it goes on as before";
    click(u"pause"_s);
    http_.gate = nullptr;
    http_.client = std::make_unique<QtHttpClient>();
    held->deliver(true);
    until([&] { return step() == u"已暂停"_s; });
    click(u"pause"_s);
    until([this] { return button(u"all"_s)->isEnabled(); });
    EXPECT_TRUE(list().topLevelItem(1)->text(3).startsWith(u"新增"_s));
}

// A user at the keyboard doesn't come to stand in the search by a button that turns grey.
TEST_F(Form33Test, AltAndTheLetterOfAGreyButtonIsNoText) {
    openRead();
    form_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form_));
    edit(u"search"_s)->setFocus();
    QTest::keyClick(qApp->focusWidget(), Qt::Key_I, Qt::AltModifier);
    EXPECT_EQ(text(u"search"_s), QString());
    QTest::keyClick(qApp->focusWidget(), Qt::Key_A, Qt::AltModifier);
    until([this] { return label(u"ticked"_s) == u"已勾选 2 个"_s; });
}

}  // namespace guanchao
