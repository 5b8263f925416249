#include "frame/windows.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <utility>

#include "articles/form26.h"
#include "articles/form27.h"
#include "exchange/form3.h"
#include "heat/form29.h"
#include "heat/form5.h"
#include "monitor/form4.h"
#include "monitor/form7.h"
#include "monitor/form8.h"
#include "research/form12.h"
#include "research/form24.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_environment.h"
#include "tests/support/test_history.h"
#include "themes/form22.h"
#include "themes/form30.h"
#include "themes/form6.h"
#include "utilities/form28.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

class WindowsTest : public ::testing::Test, protected TestEnvironment {
protected:
    WindowsTest() {
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 10, 1);
        store_.addMember(u"银行"_s, u"SH600000"_s);
        store_.run({u"insert into zhutijiankong(zhutiname) values('银行')"_s,
                    u"insert into jiankonghq(dm) values('SH600000')"_s});
        store_.addArticle(u"'2016-03-31','张三','主题','白酒','一','一'"_s);
        dialogs_.typed = u"SH600519"_s;
    }

    // With the theme and the stock chosen in the main window.
    template <typename Form>
    QPointer<QWidget> open() {
        globals_.dangqianzhuti = u"银行"_s;
        globals_.dangqiandm = u"SH600000"_s;
        windows_.openAnew<Form>();
        return shownWindow<Form>();
    }
    // What happens under the next question, whatever it is.
    void underTheQuestion(const std::function<void()>& job) {
        job_ = job;
        dialogs_.onTell = dialogs_.onAsk = dialogs_.onInput = [this] {
            if (job_) {
                std::exchange(job_, nullptr)();
                deleteClosedWindows();
            }
        };
    }

    std::function<void()> job_;
};

// The code that asked goes on in its window after the answer.
TEST_F(WindowsTest, AWindowClosedUnderItsQuestionOutlivesItsHandler) {
    const auto type = [](const QString& name, const QString& text) {
        return [=](QWidget* form) {
            lineEdit(form, name)->setText(text);
            QTest::keyClick(lineEdit(form, name), Qt::Key_Return);
        };
    };
    const auto button = [](const QString& name) {
        return [=](QWidget* form) { press(form, name); };
    };
    const auto entry = [this](const QString& name) {
        return [this, name](QWidget* form) {
            globals_.dangqiandm = u"SH600000"_s;  // its row is pressed
            trigger(form, name);
        };
    };
    const struct {
        const char* what;
        QPointer<QWidget> (WindowsTest::*open)();
        std::function<void(QWidget*)> asks;
    } cases[] = {
        {"a theme that is there is added to", &WindowsTest::open<Form6>, button(u"Command1"_s)},
        {"a theme is rewritten", &WindowsTest::open<Form6>, button(u"Command2"_s)},
        {"a stock without themes is looked for", &WindowsTest::open<Form22>,
         [](QWidget* form) {
             lineEdit(form, u"Text1"_s)->setText(u"SH688001"_s);
             press(form, u"Command9"_s);
         }},
        {"a stock joins a theme", &WindowsTest::open<Form22>, entry(u"添加到主题"_s)},
        {"a stock leaves a theme", &WindowsTest::open<Form22>, entry(u"从该主题删除"_s)},
        {"a stock joins the watchlist", &WindowsTest::open<Form30>, entry(u"添加自选股"_s)},
        {"a stock leaves the watchlist", &WindowsTest::open<Form30>, entry(u"从自选股删除"_s)},
        {"a monitor is deleted", &WindowsTest::open<Form4>, entry(u"删除监控2"_s)},
        {"a frequency is refused", &WindowsTest::open<Form4>, type(u"Text1"_s, u"0"_s)},
        {"no sound is picked", &WindowsTest::open<Form7>, button(u"Command3"_s)},
        {"a monitor is refused", &WindowsTest::open<Form8>, button(u"Command1"_s)},
        {"all themes are deleted", &WindowsTest::open<Form3>, button(u"Command5"_s)},
        {"an article is deleted", &WindowsTest::open<Form26>, button(u"Command4"_s)},
        {"a listed article is deleted", &WindowsTest::open<Form27>, entry(u"删除本篇"_s)},
        {"no proxy server is chosen", &WindowsTest::open<Form28>, button(u"Command3"_s)},
        {"a commodity is deleted", &WindowsTest::open<Form29>, entry(u"删除商品"_s)},
        {"a commodity is deleted in its editor", &WindowsTest::open<Form5>, button(u"Command3"_s)},
        {"a forecast is deleted", &WindowsTest::open<Form12>,
         [](QWidget* form) {
             form->findChild<QPlainTextEdit*>(u"Text8"_s)->clear();
             trigger(form, u"删除一个"_s);
         }},
    };
    for (const auto& it : cases) {
        const QPointer<QWidget> form = (this->*it.open)();
        ASSERT_TRUE(form) << it.what;
        bool kept = false;
        underTheQuestion([&] {
            openWindows_.closeAll();
            deleteClosedWindows();
            kept = form && !form->isVisible();
        });
        it.asks(form);
        EXPECT_TRUE(kept) << it.what;
        deleteClosedWindows();
        EXPECT_FALSE(form) << it.what << ": off the screen, but there";
        EXPECT_FALSE(shownWindow<Form4>()) << it.what;
    }
}

TEST_F(WindowsTest, AWindowReplacedUnderTheQuestionOfItsClosingIsDeletedOnce) {
    const QPointer<QWidget> old = open<Form4>();
    lineEdit(old, u"Text1"_s)->setText(u"0"_s);
    underTheQuestion([this] { windows_.openAnew<Form4>(); });
    old->close();
    deleteClosedWindows();
    EXPECT_FALSE(old);
    EXPECT_TRUE(shownWindow<Form4>());
    EXPECT_EQ(dialogs_.shown.size(), 1);
}

// The run ends first: a comparison, a scan and a download.
TEST_F(WindowsTest, AWindowClosedDuringItsRunOutlivesTheRun) {
    http_.answer = [](const QString&) { return "<table><tr><td>a<tr><td>b</table>"; };
    writeQuietHistory(stores_, store_.folder());
    const auto close = [](QWidget* form) { form->close(); };
    const auto escape = [](QWidget* form) { QTest::keyClick(form, Qt::Key_Escape); };
    const auto anew = [this](QWidget*) { windows_.openAnew<Form24>(); };
    const struct {
        QPointer<QWidget> (WindowsTest::*open)();
        QString button;
        std::function<void(QWidget*)> close;
    } cases[] = {
        {&WindowsTest::open<Form24>, u"Command9"_s, close},
        {&WindowsTest::open<Form24>, u"Command9"_s, anew},
        {&WindowsTest::open<Form12>, u"Command1"_s, close},
        {&WindowsTest::open<Form28>, u"Command4"_s, close},
        {&WindowsTest::open<Form28>, u"Command4"_s, escape},
    };
    for (const auto& it : cases) {
        const QPointer<QWidget> form = (this->*it.open)();
        bool outlives = false;
        bool closed = false;
        pump_.onRun = [&] {
            if (std::exchange(closed, true)) {
                return;
            }
            it.close(form);
            deleteClosedWindows();
            outlives = form && !form->isVisible();
        };
        press(form, it.button);
        EXPECT_TRUE(outlives);
        deleteClosedWindows();
        EXPECT_FALSE(form);
        pump_.onRun = nullptr;
        openWindows_.closeAll();
    }
    EXPECT_EQ(store_.rows(u"select * from zhutidapanhq"_s), QStringList());
    EXPECT_EQ(TestStores::rows(stores_.article, u"select * from proxy"_s), QStringList());
    EXPECT_TRUE(dialogs_.shown.isEmpty());
}

// The run's own frames are below the question.
TEST_F(WindowsTest, AWindowClosedUnderAQuestionInsideItsRunOutlivesTheRun) {
    const QPointer<QWidget> form = open<Form24>();
    underTheQuestion([this] { openWindows_.closeAll(); });
    bool outlives = false;
    pump_.onRun = [&] {
        if (outlives) {
            return;
        }
        environment_.dialogs.tell(u"asked by another window"_s);
        deleteClosedWindows();
        outlives = form && !form->isVisible();
    };
    press(form, u"Command9"_s);
    EXPECT_TRUE(outlives);
    deleteClosedWindows();
    EXPECT_FALSE(form);
}

TEST_F(WindowsTest, WhatWaitsForAnAnswerWaitsForTheAskersNextQuestionToo) {
    QObject owner;
    int done = 0;
    underTheQuestion([&] { openWindows_.afterQuestion(owner, [&done] { ++done; }); });
    environment_.dialogs.tell(u"the first question"_s);
    underTheQuestion([&] {
        QCoreApplication::sendPostedEvents();
        EXPECT_EQ(done, 0) << "the asker has not come to its end";
    });
    environment_.dialogs.tell(u"the next"_s);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(done, 1);
}

}  // namespace guanchao
