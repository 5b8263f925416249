#include "frame/windows.h"

#include <QPlainTextEdit>
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
#include "tests/support/test_history.h"
#include "tests/support/window_test.h"
#include "themes/form22.h"
#include "themes/form30.h"
#include "themes/form6.h"
#include "utilities/form28.h"

namespace guanchao {

class WindowsTest : public WindowTest {
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
    void openChosen() {
        globals_.dangqianzhuti = u"银行"_s;
        globals_.dangqiandm = u"SH600000"_s;
        open<Form>();
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
    const auto press = [this](const QString& name) {
        return [this, name] { guanchao::press(form_, name); };
    };
    const auto entry = [this](const QString& name) {
        return [this, name] {
            globals_.dangqiandm = u"SH600000"_s;  // its row is pressed
            guanchao::trigger(form_, name);
        };
    };
    const auto refusedFrequency = [this] {
        edit(u"Text1"_s)->setText(u"0"_s);
        QTest::keyClick(edit(u"Text1"_s), Qt::Key_Return);
    };
    const auto unknownStock = [this] {
        edit(u"Text1"_s)->setText(u"SH688001"_s);
        guanchao::press(form_, u"Command9"_s);
    };
    const auto deletedForecast = [this] {
        find<QPlainTextEdit>(u"Text8"_s)->clear();
        guanchao::trigger(form_, u"删除一个"_s);
    };
    const struct {
        const char* what;
        void (WindowsTest::*open)();
        std::function<void()> asks;
    } cases[] = {
        {"a theme is added to", &WindowsTest::openChosen<Form6>, press(u"Command1"_s)},
        {"a theme is rewritten", &WindowsTest::openChosen<Form6>, press(u"Command2"_s)},
        {"an unknown stock", &WindowsTest::openChosen<Form22>, unknownStock},
        {"a stock joins a theme", &WindowsTest::openChosen<Form22>, entry(u"添加到主题"_s)},
        {"a stock leaves a theme", &WindowsTest::openChosen<Form22>, entry(u"从该主题删除"_s)},
        {"onto the watchlist", &WindowsTest::openChosen<Form30>, entry(u"添加自选股"_s)},
        {"off the watchlist", &WindowsTest::openChosen<Form30>, entry(u"从自选股删除"_s)},
        {"a monitor is deleted", &WindowsTest::openChosen<Form4>, entry(u"删除监控2"_s)},
        {"a frequency is refused", &WindowsTest::openChosen<Form4>, refusedFrequency},
        {"no sound is picked", &WindowsTest::openChosen<Form7>, press(u"Command3"_s)},
        {"a monitor is refused", &WindowsTest::openChosen<Form8>, press(u"Command1"_s)},
        {"all themes are deleted", &WindowsTest::openChosen<Form3>, press(u"Command5"_s)},
        {"an article is deleted", &WindowsTest::openChosen<Form26>, press(u"Command4"_s)},
        {"a listed article is deleted", &WindowsTest::openChosen<Form27>, entry(u"删除本篇"_s)},
        {"no proxy is chosen", &WindowsTest::openChosen<Form28>, press(u"Command3"_s)},
        {"a commodity is deleted", &WindowsTest::openChosen<Form29>, entry(u"删除商品"_s)},
        {"in its editor", &WindowsTest::openChosen<Form5>, press(u"Command3"_s)},
        {"a forecast is deleted", &WindowsTest::openChosen<Form12>, deletedForecast},
    };
    for (const auto& it : cases) {
        (this->*it.open)();
        ASSERT_TRUE(form_) << it.what;
        bool kept = false;
        underTheQuestion([&] {
            openWindows_.closeAll();
            deleteClosedWindows();
            kept = form_ && !form_->isVisible();
        });
        it.asks();
        EXPECT_TRUE(kept) << it.what;
        deleteClosedWindows();
        EXPECT_FALSE(form_) << it.what << ": off the screen, but there";
        EXPECT_FALSE(shownWindow<Form4>()) << it.what;
    }
}

TEST_F(WindowsTest, AWindowReplacedUnderTheQuestionOfItsClosingIsDeletedOnce) {
    openChosen<Form4>();
    edit(u"Text1"_s)->setText(u"0"_s);
    underTheQuestion([this] { windows_.openAnew<Form4>(); });
    form_->close();
    deleteClosedWindows();
    EXPECT_FALSE(form_);
    EXPECT_TRUE(shownWindow<Form4>());
    EXPECT_EQ(dialogs_.shown.size(), 1);
}

// The run ends first: a comparison and a scan.
TEST_F(WindowsTest, AWindowClosedDuringItsRunOutlivesTheRun) {
    writeQuietHistory(stores_, store_.folder());
    const auto close = [this] { form_->close(); };
    const auto anew = [this] { windows_.openAnew<Form24>(); };
    const struct {
        void (WindowsTest::*open)();
        QString button;
        std::function<void()> close;
    } cases[] = {
        {&WindowsTest::openChosen<Form24>, u"Command9"_s, close},
        {&WindowsTest::openChosen<Form24>, u"Command9"_s, anew},
        {&WindowsTest::openChosen<Form12>, u"Command1"_s, close},
    };
    for (const auto& it : cases) {
        (this->*it.open)();
        bool outlives = false;
        bool closed = false;
        pump_.onRun = [&] {
            if (std::exchange(closed, true)) {
                return;
            }
            it.close();
            deleteClosedWindows();
            outlives = form_ && !form_->isVisible();
        };
        press(form_, it.button);
        EXPECT_TRUE(outlives);
        deleteClosedWindows();
        EXPECT_FALSE(form_);
        pump_.onRun = nullptr;
        openWindows_.closeAll();
    }
    EXPECT_EQ(store_.rows(u"select * from zhutidapanhq"_s), QStringList());
    EXPECT_TRUE(dialogs_.shown.isEmpty());
}

// The run's own frames are below the question.
TEST_F(WindowsTest, AWindowClosedUnderAQuestionInsideItsRunOutlivesTheRun) {
    openChosen<Form24>();
    underTheQuestion([this] { openWindows_.closeAll(); });
    bool outlives = false;
    pump_.onRun = [&] {
        if (outlives) {
            return;
        }
        environment_.dialogs.tell(u"asked by another window"_s);
        deleteClosedWindows();
        outlives = form_ && !form_->isVisible();
    };
    press(form_, u"Command9"_s);
    EXPECT_TRUE(outlives);
    deleteClosedWindows();
    EXPECT_FALSE(form_);
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
