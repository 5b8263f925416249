#include <QWindow>
#include <algorithm>
#include <optional>

#include "app/form2.h"
#include "frame/application.h"
#include "monitor/form4.h"
#include "platform/desktop/desktop_dialogs.h"
#include "tests/support/quote_reply.h"
#include "tests/support/window_test.h"

namespace guanchao {

// Real boxes over the real timers of the main window, which polls as fast as it can.
class PollsUnderBoxesTest : public WindowTest {
protected:
    PollsUnderBoxesTest() {
        store_.run({
            u"update tempcanshu set jiankongpinlu=2"_s,
            u"insert into jiankonghq(dm) values('SH600000'),('SZ000001')"_s,
            u"insert into gegujiankong(dm,jc,leixin,bijiaofu,baojinzhi,tanchuform,yinyue)"
            u" values('SH600000','浦发银行','股价','>',10.5,1,'/声/t.mp3')"_s,
        });
        http_.answer = [this](const QString& path) {
            return quoteReply(path, {{u"sh600000"_s, price_}, {u"sz000001"_s, 10}});
        };
        dialogs_.boxes = &boxes_;
        failures_.box = &application_;
        application_.setDialogs(&dialogs_);
        main_.Form_Load();
        main_.show();
        for (const QString& name : {u"Timer1"_s, u"Timer2"_s, u"Timer3"_s}) {
            main_.findChild<QTimer*>(name)->setInterval(5);
        }
        main_.findChild<QTimer*>(u"Timer4"_s)->stop();
    }
    ~PollsUnderBoxesTest() override {
        application_.setDialogs(nullptr);
        dialogs_.boxes = nullptr;
    }

    static bool wait(const std::function<bool()>& condition) {
        return QTest::qWaitFor(condition, 10000);
    }
    bool morePolls(int count) {
        const qsizetype before = http_.paths.size();
        return wait([&] { return http_.paths.size() >= before + count; });
    }
    static QList<QPointer<Form4>> managers() {
        const QList<Form4*> shown = shownWindows<Form4>();
        return {shown.begin(), shown.end()};
    }
    static bool staysOnTop(const QWidget& window) {
        return window.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint);
    }
    // What is mended is so under the box.
    void expectPollsAndAlarmsUnderTheBoxOf(
        const std::function<void()>& cause, const std::function<void()>& mend = [] {}) {
        ASSERT_TRUE(morePolls(1));
        cause();
        ASSERT_TRUE(wait([] { return shownWindow<QMessageBox>() != nullptr; }));
        const QList<QMessageBox*> box = shownWindows<QMessageBox>();
        mend();
        expectPollsAndAlarms();
        EXPECT_EQ(shownWindows<QMessageBox>(), box) << "it stands, and no other";
        EXPECT_FALSE(staysOnTop(*managers().first())) << "the manager doesn't hide it";
        EXPECT_TRUE(!box.first()->isModal() || QApplication::activeWindow() == box.first())
            << "its keys reach it";
        main_.findChild<QAction*>(u"tuopanexit"_s)->trigger();
        EXPECT_TRUE(wait([&] { return !processes_.ended.isEmpty(); })) << "the program ends";
    }

    void expectPollsAndAlarms() {
        EXPECT_TRUE(morePolls(5));
        price_ = 10;
        EXPECT_TRUE(morePolls(2));
        sound_.played.clear();
        const auto before = managers();
        price_ = 10.6;
        EXPECT_TRUE(wait([&] {
            const auto now = managers();
            return std::ranges::any_of(now, [&](const auto& it) { return !before.contains(it); });
        }));
        EXPECT_TRUE(wait([this] { return !sound_.played.isEmpty(); }));
    }

    Application& application_ = *static_cast<Application*>(QCoreApplication::instance());
    DesktopDialogs boxes_;
    double price_ = 10;
    Form2 main_{environment_, windows_, desktop_};
};

TEST_F(PollsUnderBoxesTest, AReplyThatBreaksOff) {
    const auto whole = http_.answer;
    expectPollsAndAlarmsUnderTheBoxOf(
        [this] {
            http_.answer = [](const QString& path) {
                return quoteReply(path, {{u"sh600000"_s, 10}})
                    .replace(",2026-11-24,10:00:00\"", "\"");
            };
        },
        [&] { http_.answer = whole; });
}

TEST_F(PollsUnderBoxesTest, AStoreThatIsLocked) {
    const Impatience impatience;
    std::optional<Connection> other;
    expectPollsAndAlarmsUnderTheBoxOf(
        [&] {
            other.emplace(stores_.main.open());
            other->execute(u"begin exclusive"_s);
        },
        [&] { other.reset(); });
}

TEST_F(PollsUnderBoxesTest, AnAlarmLeavesWhatTheUserIsTyping) {
    windows_.openAnew<Form4>();
    const auto manager = managers();
    auto* frequency = lineEdit(manager.first(), u"Text1"_s);
    frequency->setText(u"0"_s);
    ASSERT_TRUE(morePolls(2));
    price_ = 10.6;
    ASSERT_TRUE(wait([this] { return !sound_.played.isEmpty(); }));
    EXPECT_EQ(managers(), manager) << "the open one shows the alarm";
    EXPECT_EQ(frequency->text(), u"0"_s);
    EXPECT_EQ(store_.rows(u"select jiankongpinlu from tempcanshu"_s), QStringList{u"2"_s});
    EXPECT_TRUE(dialogs_.shown.isEmpty());
    frequency->setText(u"2"_s);
}

TEST_F(PollsUnderBoxesTest, AnAnswer) {
    expectPollsAndAlarmsUnderTheBoxOf([this] { dialogs_.tell(u"没有网络"_s, u"分时行情"_s); });
}

TEST_F(PollsUnderBoxesTest, ABoxThatComesLaterIsNotHiddenByTheManager) {
    const std::function<void()> boxes[] = {
        [this] { dialogs_.tell(u"没有网络"_s, u"分时行情"_s); },
        [this] { application_.report(std::runtime_error("odd")); },
    };
    for (const auto& box : boxes) {
        price_ = 10;
        ASSERT_TRUE(morePolls(2));
        price_ = 10.6;
        ASSERT_TRUE(wait([] { return !managers().isEmpty() && staysOnTop(*managers().first()); }));
        box();
        ASSERT_TRUE(shownWindow<QMessageBox>());
        EXPECT_FALSE(staysOnTop(*managers().first()));
        shownWindow<QMessageBox>()->reject();
        deleteClosedWindows();
    }
}

TEST_F(PollsUnderBoxesTest, TheQuestionOfTheEnd) {
    expectPollsAndAlarmsUnderTheBoxOf([this] { main_.close(); });
}

}  // namespace guanchao
