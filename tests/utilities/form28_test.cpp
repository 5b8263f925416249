#include "utilities/form28.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QListWidget>

#include "store/store_error.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_environment.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

class Form28Test : public ::testing::Test, protected TestEnvironment {
protected:
    Form28Test() {
        stores_.article.open().execute(
            u"insert into proxy(id,ProxyServer,ProxyPort,UseProxyUser,proxyuser,proxypassword,"
            u"beizhu,defaultproxy) values(3,'one',80,1,'u','p','n',1),(7,'two',81,0,'','','',0)"_s);
        stores_.article.open().execute(u"insert into tempcanshu values(1,1,0)"_s);
        windows_.openAnew<Form28>();
        form_ = shownWindow<Form28>();
    }

    template <typename Widget>
    Widget* find(const char* name) {
        return form_->findChild<Widget*>(QString::fromLatin1(name));
    }
    void push(const char* button) { find<QPushButton>(button)->click(); }
    QString shown() {
        QStringList values{find<QLabel>("Label6")->text()};
        for (const char* name : {"Text1", "Text2", "Text3", "Text4", "Text5"}) {
            values << find<QLineEdit>(name)->text();
        }
        for (const char* name : {"Check1", "Check2"}) {
            values << QString::number(find<QCheckBox>(name)->isChecked());
        }
        return values.join(u'|');
    }

    Form28* form_ = nullptr;
};

TEST_F(Form28Test, ALineShowsItsServer) {
    auto* list = find<QListWidget>("List1");
    auto* user = find<QLineEdit>("Text3");
    EXPECT_FALSE(user->isEnabled());
    EXPECT_EQ(shown(), u"||||||0|0"_s);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(0)).center());
    EXPECT_EQ(shown(), u"3|one|80|u|p|n|1|1"_s);
    EXPECT_TRUE(user->isEnabled());
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(shown(), u"7|two|81||||0|0"_s);
    EXPECT_FALSE(user->isEnabled());
}

TEST_F(Form28Test, TheButtonsLoadTheListAgain) {
    auto* list = find<QListWidget>("List1");
    list->setCurrentRow(1);
    find<QLineEdit>("Text1")->setText(u"deux"_s);
    find<QCheckBox>("Check2")->setChecked(true);
    push("Command2");
    EXPECT_EQ(list->item(1)->text(), u"7    deux"_s);
    EXPECT_EQ(shown(), u"7|deux|81||||0|1"_s) << "it can be changed further";
    push("Command3");
    EXPECT_EQ(dialogs_.shown.last(), u"观潮台|没有选择代理服务器！"_s) << "the list has none";
    find<QLineEdit>("Text1")->setText(u"three"_s);
    push("Command1");
    EXPECT_EQ(TestStores::rows(stores_.article, u"select id,ProxyServer,defaultproxy from proxy"_s),
              QStringList({u"3|one|0"_s, u"7|deux|0"_s, u"8|three|1"_s}));
    EXPECT_EQ(find<QLabel>("Label6")->text(), QString()) << "修改 must not reach the former one";
    list->setCurrentRow(2);
    push("Command3");
    EXPECT_EQ(list->count(), 2);
    EXPECT_EQ(find<QLabel>("Label6")->text(), QString());
    http_.answer = [](const QString&) { return "<table><tr><td>a<tr><td>b</table>"; };
    pump_.onRun = [this] { EXPECT_FALSE(find<QPushButton>("Command4")->isEnabled()); };
    push("Command4");
    EXPECT_EQ(pump_.runs, 1);
    EXPECT_TRUE(find<QPushButton>("Command4")->isEnabled());
    EXPECT_EQ(list->count(), 4);
    EXPECT_TRUE(find<QPushButton>("Command1")->isDefault());
}

TEST_F(Form28Test, TheSwitchesAreStoredAtAClick) {
    EXPECT_TRUE(find<QCheckBox>("Check3")->isChecked());
    EXPECT_FALSE(find<QCheckBox>("Check4")->isChecked());
    find<QCheckBox>("Check3")->click();
    find<QCheckBox>("Check4")->click();
    EXPECT_EQ(TestStores::rows(stores_.article, u"select * from tempcanshu"_s),
              QStringList{u"1|0|1"_s});
    QFile::remove(stores_.article.path);
    EXPECT_THROW(find<QCheckBox>("Check3")->click(), StoreError);
    EXPECT_FALSE(find<QCheckBox>("Check3")->isChecked()) << "what could not be stored isn't shown";
}

}  // namespace guanchao
