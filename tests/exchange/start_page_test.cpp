#include "exchange/start_page.h"

#include <QCommandLinkButton>

#include "exchange/code_table_settings.h"
#include "platform/qt_http_client.h"
#include "tests/support/small_market.h"
#include "tests/support/window_test.h"

namespace guanchao {

class StartPageTest : public WindowTest {
protected:
    StartPageTest() {
        http_.client = std::make_unique<QtHttpClient>();
        services_.boards = {market_.service()};
        services_.stockList = {{u"http://127.0.0.1:1"_s, {}}, market_.service()};
        globals_.yingyongmulu = store_.folder();
        store_.addCode(u"SH600519"_s, u"贵州茅台"_s, 1, 1);
        store_.addCode(u"SZ000001"_s, u"平安银行"_s, 1, 1);
        writeFile(store_.folder() + practiceStarter);
    }

    StartPage* openPage() {
        auto* page = open<StartPage>();
        page->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(page));
        return page;
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(qApp->focusWidget(), key, modifiers);
    }
    bool isFree() const { return button(u"back"_s)->isEnabled(); }

    SmallMarket market_{{{u"SH600519"_s, u"贵州茅台"_s},
                         {u"SZ000001"_s, u"平安银行"_s},
                         {u"SZ000002"_s, u"万科A"_s}},
                        {{u"白酒"_s, u"SH600519"_s}}};
};

TEST_F(StartPageTest, ThePracticeStartsBesideThisAndTheGuideOpens) {
    const StartPage* page = openPage();
    writeFile(store_.folder() + u"软件使用说明.html"_s);
    click(u"guide"_s);
    EXPECT_EQ(shell_.opened, QStringList{store_.folder() + u"软件使用说明.html"_s});
    EXPECT_FALSE(page->hasChosen());

    key(Qt::Key_L, Qt::AltModifier);
    until([&] { return page->hasChosen(); });
    EXPECT_EQ(processes_.started, QStringList{store_.folder() + practiceStarter + u'|'});
    EXPECT_TRUE(label(u"words"_s).startsWith(u"练习正在启动"_s));
    processes_.canStart = false;
    click(u"practise"_s);
    EXPECT_TRUE(label(u"words"_s).startsWith(u"没有能启动练习"_s));

    // What can be chosen: practise, live, take over, restore.
    const auto choices = [this] {
        QString marks;
        for (const auto* choice : form_->findChildren<QCommandLinkButton*>()) {
            marks += choice->isEnabled() ? u'+' : u'-';
        }
        return marks;
    };
    EXPECT_EQ(choices(), u"++++"_s);
    QFile::remove(store_.folder() + practiceStarter);
    openPage();
    EXPECT_EQ(choices(), u"-+++"_s);
    services_.isPractice = true;
    openPage();
    EXPECT_EQ(choices(), u"---+"_s);
}

TEST_F(StartPageTest, TheFillGoesByKeysIsStoppedByEscAndGoesOn) {
    openPage();
    key(Qt::Key_S, Qt::AltModifier);
    until([this] { return button(u"begin"_s)->hasFocus(); });
    http_.onGet = [this] {
        if (http_.paths.last().contains(u"newFLJK"_s)) {
            EXPECT_EQ(label(u"step"_s), u"主题：正在读板块列表…"_s);
            key(Qt::Key_Escape);
        }
    };
    key(Qt::Key_Space);
    EXPECT_TRUE(button(u"stop"_s)->hasFocus());
    EXPECT_FALSE(isFree());
    until([this] { return isFree(); });
    EXPECT_TRUE(label(u"words"_s).startsWith(u"代码表：更新完成。"_s));
    EXPECT_TRUE(label(u"words"_s).endsWith(u"再点“开始”只补没有读到的。"_s));
    EXPECT_FALSE(find<QCheckBox>(u"codes"_s)->isChecked()) << "that part is whole";
    EXPECT_TRUE(form_->isVisible() && button(u"begin"_s)->hasFocus());
    EXPECT_EQ(CodeTableSettings(store_.folder() + u"界面.ini"_s).lastUpdate(),
              u"2026-11-24 10:00:00"_s);
    http_.onGet = nullptr;
    find<QCheckBox>(u"themes"_s)->setFocus();
    key(Qt::Key_Return);
    until([this] { return isFree(); });
    EXPECT_EQ(store_.rows(u"select zhutiname from dzhzhuti"_s), QStringList{u"白酒"_s});
    EXPECT_FALSE(button(u"begin"_s)->isEnabled()) << "nothing is left";
    key(Qt::Key_Escape);
    EXPECT_FALSE(form_ && form_->isVisible());
}

// The first request, the second, ...: each is held, and then comes to a window that is gone.
TEST_F(StartPageTest, ClosedAtAnyRequestOrQuestionItEnds) {
    for (int held = 1; held <= 6; ++held) {
        openPage();
        click(u"live"_s);
        const auto gate = std::make_shared<Later<bool>>();
        int requests = 0;
        http_.onGet = [&] {
            if (++requests == held) {
                http_.client = nullptr;
                http_.gate = gate;
            }
        };
        click(u"begin"_s);
        until([&] { return requests == held; });
        EXPECT_EQ(label(u"step"_s).contains(u"，改问新浪"_s), held == 3 || held == 4);
        clock_.moveOn(std::chrono::seconds(4));
        timeIsUp(find<QTimer>(u"answerWait"_s));
        const QString most = held < 3 ? QString() : u"，最多还要 6 秒"_s;
        EXPECT_TRUE(holds(label(u"step"_s), u"，等网站应答"_s + most));
        leaveWindows();
        EXPECT_FALSE(form_);
        gate->deliver(true);
        QApplication::processEvents();
        http_.gate = nullptr;
        http_.client = std::make_unique<QtHttpClient>();
    }
    http_.onGet = nullptr;
    for (const QString& picked : {QString(), store_.folder()}) {
        dialogs_.gate = std::make_shared<Later<bool>>();
        dialogs_.picked = picked;
        openPage();
        click(u"takeOver"_s);
        leaveWindows();
        dialogs_.gate->deliver(true);
        QApplication::processEvents();
    }
    EXPECT_EQ(failures_.texts, QStringList());
    EXPECT_EQ(dialogs_.shown.size(), 2) << "two dialogs for a folder";
}

}  // namespace guanchao
