#include "utilities/form28.h"

#include "tests/support/window_test.h"

namespace guanchao {

class Form28Test : public WindowTest {
protected:
    Form28Test() {
        runArticle(
            u"insert into proxy(id,ProxyServer,ProxyPort,UseProxyUser,proxyuser,proxypassword,"
            u"beizhu,defaultproxy) values(3,'one',80,1,'u','p','n',1),(7,'two',81,0,'','','',0)"_s);
        runArticle(u"insert into tempcanshu values(1,1,0)"_s);
        open<Form28>();
    }

    QCheckBox& check(const QString& name) const { return *find<QCheckBox>(name); }
    bool isDownloading() {
        EXPECT_NE(button(u"Command4"_s)->isEnabled(), button(u"stopRun"_s)->isVisible());
        return !button(u"Command4"_s)->isEnabled();
    }
    QStringList servers() { return articleRows(u"select ProxyServer from proxy"_s); }
    QString shown() {
        QStringList values{label(u"Label6"_s)};
        for (int box = 1; box <= 5; ++box) {
            values << text(u"Text%1"_s.arg(box));
        }
        values << QString::number(check(u"Check1"_s).isChecked())
               << QString::number(check(u"Check2"_s).isChecked());
        return values.join(u'|');
    }
};

TEST_F(Form28Test, ALineShowsItsServerAndTheButtonsLoadTheListAgain) {
    auto* list = find<QListWidget>(u"List1"_s);
    EXPECT_EQ(shown(), u"||||||0|0"_s);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(0)).center());
    EXPECT_EQ(shown(), u"3|one|80|u|p|n|1|1"_s);
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(shown(), u"7|two|81||||0|0"_s);
    edit(u"Text1"_s)->setText(u"deux"_s);
    check(u"Check2"_s).setChecked(true);
    click(u"Command2"_s);
    EXPECT_EQ(list->item(1)->text(), u"7    deux"_s);
    EXPECT_EQ(shown(), u"7|deux|81||||0|1"_s) << "it can be changed further";
    EXPECT_EQ(list->currentRow(), 1);
    edit(u"Text1"_s)->setText(u"three"_s);
    click(u"Command1"_s);
    EXPECT_EQ(articleRows(u"select id,ProxyServer,defaultproxy from proxy"_s),
              QStringList({u"3|one|0"_s, u"7|deux|0"_s, u"8|three|1"_s}));
    EXPECT_EQ(shown(), u"8|three|81||||0|1"_s) << "修改 must not reach the former one";
    http_.answer = [](const QString&) { return "<table><tr><td>a<tr><td>b</table>"; };
    http_.onGet = [this] { EXPECT_TRUE(isDownloading()); };
    click(u"Command4"_s);
    EXPECT_EQ(http_.paths.size(), 1);
    EXPECT_FALSE(isDownloading());
    EXPECT_EQ(list->count(), 5);
    EXPECT_TRUE(button(u"Command1"_s)->isDefault());
}

TEST_F(Form28Test, ADownloadThatWaitsForAHeldStoreChangesNothingOnceItsWindowIsClosed) {
    http_.answer = [](const QString&) { return "<table><tr><td>a<tr><td>b</table>"; };
    for (const bool closes : {true, false}) {
        EXPECT_EQ(servers(), QStringList({u"one"_s, u"two"_s}));
        open<Form28>();
        Connection other = stores_.article.open();
        other.execute(u"begin exclusive"_s);
        click(u"Command4"_s);
        EXPECT_TRUE(isDownloading());
        if (closes) {
            leaveWindows();
        }
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return !isDownloading(); }));
    EXPECT_EQ(servers(), QStringList({u"one"_s, u"two"_s, u"a"_s, u"b"_s}));
    EXPECT_EQ(dialogs_.shown.size(), 1);
    EXPECT_TRUE(failures_.texts.isEmpty());
}

TEST_F(Form28Test, TheSwitchesAreStoredAtAClick) {
    EXPECT_TRUE(check(u"Check3"_s).isChecked());
    EXPECT_FALSE(check(u"Check4"_s).isChecked());
    check(u"Check3"_s).click();
    check(u"Check4"_s).toggle();  // as a program for the blind does
    EXPECT_EQ(articleRows(u"select * from tempcanshu"_s), QStringList{u"1|0|1"_s});
    QFile::remove(stores_.article.path);
    EXPECT_THROW(check(u"Check3"_s).click(), StoreError);
    EXPECT_FALSE(check(u"Check3"_s).isChecked()) << "what could not be stored isn't shown";
}

}  // namespace guanchao
