#include "frame/windows.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSettings>

#include "articles/form26.h"
#include "articles/form27.h"
#include "exchange/form3.h"
#include "exchange/form33.h"
#include "exchange/form35.h"
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
#include "themes/form38.h"
#include "themes/form6.h"
#include "themes/review_window.h"
#include "themes/theme_page.h"
#include "utilities/form28.h"
#include "utilities/form34.h"

namespace guanchao {

class WindowsTest : public WindowTest {
public:
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
    // And what it waited for comes to nobody.
    void expectGone(Later<bool>& awaited) {
        deleteClosedWindows();
        EXPECT_FALSE(form_);
        awaited.deliver(true);
        QThreadPool::globalInstance()->waitForDone();
        QApplication::processEvents();
    }
};

TEST_F(WindowsTest, AQuestionEndsWithItsWindow) {
    const auto press = [this](const QString& name) {
        return [this, name] { guanchao::press(form_, name); };
    };
    const auto entry = [this](const QString& name) {
        return [this, name] { guanchao::trigger(form_, name); };
    };
    using Opens = void (WindowsTest::*)();
    const std::tuple<const char*, Opens, std::function<void()>> cases[] = {
        {"a theme is added to", &WindowsTest::openChosen<Form6>, press(u"Command1"_s)},
        {"a stock joins a theme", &WindowsTest::openChosen<Form22>, entry(u"添加到主题"_s)},
        {"onto the watchlist", &WindowsTest::openChosen<Form30>, entry(u"添加自选股"_s)},
        {"a sound for a stock", &WindowsTest::openChosen<Form7>, press(u"Command3"_s)},
        {"a sound for a theme", &WindowsTest::openChosen<Form8>, press(u"Command3"_s)},
        {"all themes are deleted", &WindowsTest::openChosen<Form3>, press(u"Command5"_s)},
        {"a library is picked", &WindowsTest::openChosen<Form3>, press(u"Command8"_s)},
        {"an article is deleted", &WindowsTest::openChosen<Form26>, press(u"Command4"_s)},
        {"a listed article is deleted", &WindowsTest::openChosen<Form27>, entry(u"删除本篇"_s)},
        {"a commodity is deleted", &WindowsTest::openChosen<Form29>, entry(u"删除商品"_s)},
        {"in its editor", &WindowsTest::openChosen<Form5>, press(u"Command3"_s)},
        {"a forecast is deleted", &WindowsTest::openChosen<Form12>, entry(u"删除一个"_s)},
        {"codes are exported", &WindowsTest::openChosen<Form12>, entry(u"导出自选股"_s)},
    };
    for (const auto& [what, opens, asks] : cases) {
        SCOPED_TRACE(what);
        const auto answered = std::make_shared<Later<bool>>();
        dialogs_.gate = answered;
        dialogs_.shown.clear();
        (this->*opens)();
        ASSERT_TRUE(form_);
        asks();
        EXPECT_EQ(dialogs_.shown.size(), 1);
        closeWindows();
        expectGone(*answered);
        EXPECT_EQ(dialogs_.shown.size(), 1) << "nothing was done of which it would tell";
        EXPECT_TRUE(failures_.texts.isEmpty());
    }
}

// A comparison as it reads and as it downloads, a ranking, a scan, a search, and what is read with
// the window.
TEST_F(WindowsTest, AWindowClosedDuringItsRunGoesAtOnce) {
    writeQuietHistory(stores_, store_.folder());
    const auto close = [this] { form_->close(); };
    const auto anew = [this] { windows_.openAnew<Form24>(); };
    const struct {
        void (WindowsTest::*open)();
        QString button;
        qsizetype requests;  // before the window closes
        std::function<void()> close;
    } cases[] = {
        {&WindowsTest::openChosen<Form24>, u"Command9"_s, 0, close},
        {&WindowsTest::openChosen<Form24>, u"Command9"_s, 1, close},
        {&WindowsTest::openChosen<Form24>, u"Command9"_s, 1, anew},
        {&WindowsTest::openChosen<Form24>, u"rankAll"_s, 0, close},
        {&WindowsTest::openChosen<Form12>, u"Command1"_s, 0, close},
        {&WindowsTest::openChosen<Form12>, u"Command2"_s, 0, close},
        {&WindowsTest::openChosen<Form38>, u"Command3"_s, 0, close},
        {&WindowsTest::openChosen<ThemePage>, {}, 0, close},
        {&WindowsTest::openChosen<ReviewWindow>, {}, 0, close},
    };
    for (const auto& it : cases) {
        (this->*it.open)();
        http_.paths.clear();
        http_.gate = std::make_shared<Later<bool>>();
        if (!it.button.isEmpty()) {
            click(it.button);
        }
        until([&] { return http_.paths.size() == it.requests; });
        it.close();
        expectGone(*http_.gate);
        EXPECT_EQ(http_.paths.size(), it.requests);
        closeWindows();
    }
    EXPECT_EQ(store_.rows(u"select * from zhutidapanhq"_s), QStringList());
    EXPECT_TRUE(dialogs_.shown.isEmpty() && failures_.texts.isEmpty());
}

// Held at each of its requests. Without a button the run begins with the window, and Esc closes
// that.
TEST_F(WindowsTest, ARunIsStoppedByEscAndEndsWithItsWindowAtEachOfItsRequests) {
    writeFile(store_.folder() + u"services.ini"_s);
    services_ = readServices(store_.folder() + u"services.ini"_s);
    http_.answer = [](const QString& path) -> std::optional<QByteArray> {
        return path.contains(u"newFLJK"_s)      ? "var S = {\"gn_a\":\"gn_a,a,1\"}"
               : path.contains(u"StockCount"_s) ? "\"1\""
               : path.contains(u"page=1&"_s)    ? "[{symbol:\"sh600000\",name:\"x\"}]"
                                                : "<table><tr><td>a<tr><td>b</table>";
    };
    const struct {
        void (WindowsTest::*open)();
        QStringList buttons;
        int requests;
    } runs[] = {
        {&WindowsTest::openChosen<Form28>, {u"Command4"_s}, 1},
        {&WindowsTest::openChosen<Form33>, {}, 1},
        {&WindowsTest::openChosen<Form33>, {u"all"_s, u"begin"_s}, 1},
        {&WindowsTest::openChosen<Form34>, {u"test"_s}, 3},
        {&WindowsTest::openChosen<Form35>, {u"begin"_s}, 2},
    };
    int asked = 0, held = 0;
    std::shared_ptr<Later<bool>> gate;
    http_.onGet = [&] { http_.gate = ++asked == held ? gate : nullptr; };
    const auto hold = [&](int request) {
        asked = 0;
        held = request;
        gate = std::make_shared<Later<bool>>();
    };
    const auto begin = [&](const auto& run, int request) {
        hold(run.buttons.isEmpty() ? request : 0);
        (this->*run.open)();
        for (const QString& name : run.buttons) {
            until([&] { return button(name)->isEnabled(); });
            hold(request);
            click(name);
        }
        until([&] { return asked == request; });
    };
    for (const auto& it : runs) {
        for (int request = 1; request <= it.requests; ++request) {
            SCOPED_TRACE(it.buttons.join(u' ').toStdString() + ' ' + std::to_string(request));
            begin(it, request);
            form_->close();
            expectGone(*gate);
            EXPECT_EQ(asked, request);
            if (it.buttons.isEmpty()) {
                continue;
            }
            begin(it, request);
            QTest::keyClick(form_.data(), Qt::Key_Escape);
            EXPECT_TRUE(form_->isVisible());
            gate->deliver(true);
            until([&] { return button(it.buttons[0])->isEnabled(); });
            EXPECT_EQ(asked, request);
            QTest::keyClick(form_.data(), Qt::Key_Escape);
            EXPECT_FALSE(form_ && form_->isVisible());
        }
    }
    EXPECT_EQ(store_.rows(u"select zhutiname from dzhzhuti"_s), QStringList{u"银行"_s});
    EXPECT_TRUE(dialogs_.shown.isEmpty() && failures_.texts.isEmpty());
}

// The file of places stands beside the stores; a second OpenWindows stands for the next run.
class WindowMemoryTest : public WindowsTest {
public:
    template <typename Form>
    Form* openIn(OpenWindows& windows) {
        auto* form = new Form(environment_, windows_);
        windows.adopt(form);
        form_ = form;
        EXPECT_TRUE(QTest::qWaitFor([this] { return grid().cols() > 1; }));
        return form;
    }

    QString ini_ = store_.folder() + u"界面.ini"_s;
};

TEST_F(WindowMemoryTest, AWindowComesBackAsItWasLeft) {
    globals_.dangqiandm = u"SH600000"_s;
    OpenWindows thisRun{WindowMemory(ini_)};
    openIn<Form4>(thisRun);
    form_->setGeometry(40, 60, 600, 400);
    view().setColumnWidth(1, 177);
    view().horizontalHeader()->sectionClicked(1);
    const QRect left = form_->geometry();
    form_->close();
    deleteClosedWindows();

    OpenWindows nextRun{WindowMemory(ini_)};
    openIn<Form4>(nextRun);
    EXPECT_EQ(form_->geometry(), left);
    EXPECT_EQ(view().columnWidth(1), 177);
    EXPECT_EQ(view().horizontalHeader()->sortIndicatorSection(), 1);

    const QPointer<QWidget> first = form_;
    openIn<Form4>(nextRun);
    EXPECT_NE(form_->pos(), first->pos()) << "the second one would hide it";
}

// Of a larger screen, of another program, cut off.
TEST_F(WindowMemoryTest, APlaceThatCantBeTakenIsLeftAlone) {
    globals_.dangqiandm = u"SH600000"_s;
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    QWidget far;
    far.setGeometry(9000, 9000, 6000, 5000);
    for (const QByteArray& place : {QByteArray(), QByteArray("?"), far.saveGeometry()}) {
        QSettings settings(ini_, QSettings::IniFormat);
        settings.setValue(u"窗口/Form4/位置"_s, place);
        settings.setValue(u"窗口/Form4/MSHFlexGrid1"_s,
                          QVariantMap{{u"列"_s, QStringList{u"="_s, u"代码=x"_s, u"代码=-4"_s}},
                                      {u"排序"_s, u"代码 3"_s}});
        settings.sync();
        OpenWindows nextRun{WindowMemory(ini_)};
        openIn<Form4>(nextRun);
        EXPECT_TRUE(room.contains(form_->geometry())) << place.toHex().toStdString();
        EXPECT_EQ(view().horizontalHeader()->sortIndicatorSection(), -1);
        form_->close();
        deleteClosedWindows();
    }
}

}  // namespace guanchao
