#include "app/alarm_banner.h"
#include "app/form2.h"
#include "monitor/form4.h"
#include "monitor/form7.h"
#include "monitor/form8.h"
#include "tests/support/window_test.h"

namespace guanchao {

class MonitorWindowsTest : public WindowTest {
protected:
    MonitorWindowsTest() {
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 10, 0);
        store_.addCode(u"SZ000001"_s, u"平安银行"_s, 10, 0);
        store_.addMembers(u"银行"_s, {u"SH600000"_s, u"SZ000001"_s});
        store_.run({
            u"insert into zhutijiankong(zhutiname,bijiaofu,baojinzhi,tanchuform,yinyue)"
            u" values('银行','>',5,1,'/声/t.mp3')"_s,
            u"insert into gegujiankong(dm,jc,leixin,bijiaofu,baojinzhi)"
            u" values('SH600000','浦发银行','股价','<',9)"_s,
            u"insert into jiankonghq(dm,jc) select dm,jc from dmb"_s,
        });
    }

    static void leave(QLineEdit* box) {
        QFocusEvent event(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(box, &event);
        QApplication::processEvents();
    }
    // Presses the right button on the first row and chooses an entry of the popup that it opens.
    void choose(const QString& gridName, const QString& entry) {
        clickCell(view(gridName), 1, 1, Qt::RightButton);
        EXPECT_FALSE(popup().isEmpty());
        trigger(entry);
    }
    QStringList monitored() {
        return store_.rows(
            u"select zhutiname from zhutijiankong union all select dm from gegujiankong"_s);
    }
};

TEST_F(MonitorWindowsTest, TheManagerShowsTogglesAndHandsRowsToTheEditors) {
    open<Form4>();
    click(u"Command2"_s);
    EXPECT_EQ(form_->windowTitle(), u"监控管理(监控已启动)"_s);
    choose(u"MSHFlexGrid1"_s, u"修改监控"_s);
    EXPECT_EQ(shownWindow<Form8>()->windowTitle(), u"修改主题监控"_s);
    choose(u"MSHFlexGrid2"_s, u"修改监控2"_s);
    EXPECT_EQ(shownWindow<Form7>()->windowTitle(), u"修改个股监控"_s);
    const QStringList all = monitored();
    click(u"Command1"_s);
    EXPECT_EQ(dialogs_.shown,
              QStringList{u"观潮台|确实要清空全部监控吗？（1 个主题监控，1 个个股监控）"_s});
    EXPECT_EQ(monitored(), QStringList());
    click(u"undo"_s);
    until([&] { return monitored() == all; });
}

TEST_F(MonitorWindowsTest, AFrequencyCountsWhenItsBoxIsLeftAndNotWhenTheWindowCloses) {
    open<Form4>();
    edit(u"Text1"_s)->setText(u"1"_s);
    leave(edit(u"Text1"_s));
    EXPECT_EQ(text(u"Text1"_s), u"20"_s);
    EXPECT_EQ(dialogs_.shown.size(), 1);
    edit(u"Text1"_s)->setText(u"7.5"_s);
    leave(edit(u"Text1"_s));
    const std::function<void()> closings[] = {
        [&] { QTest::keyClick(edit(u"Text1"_s), Qt::Key_Escape); },
        [&] { form_->close(); },
        [&] { windows_.openAnew<Form4>(); },
        [&] { QCoro::waitFor(openWindows_.closeAll({})); },
    };
    for (const auto& closed : closings) {
        open<Form4>()->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form_));
        edit(u"Text1"_s)->setFocus();
        QTest::keyClicks(edit(u"Text1"_s), u"0"_s);
        closed();
        deleteClosedWindows();
        QApplication::processEvents();
        EXPECT_EQ(dialogs_.shown.size(), 1);
        EXPECT_EQ(store_.rows(u"select jiankongpinlu from tempcanshu"_s), QStringList{u"8"_s});
    }
}

TEST_F(MonitorWindowsTest, TheStockEditorPicksConfirmsAndOpensTheManagerAnew) {
    globals_.dangqiandm = u"SH600000"_s;
    globals_.dangqianjc = u"浦发银行"_s;
    open<Form7>();
    store_.run({u"delete from jiankonghq"_s});
    edit(u"Text1"_s)->setText(u" sz000001"_s);
    click(u"Command3"_s);
    EXPECT_EQ(dialogs_.shown.takeLast(), u"观潮台|没有选择文件。"_s);
    dialogs_.picked = u"/声/s.mp3"_s;
    click(u"Command3"_s);
    find<QComboBox>(u"Combo2"_s)->setCurrentText(u"股价"_s);
    find<QComboBox>(u"Combo1"_s)->setCurrentText(u"<"_s);
    edit(u"Text2"_s)->setText(u"9.5元"_s);
    find<QCheckBox>(u"Check1"_s)->setChecked(false);
    click(u"Command1"_s);
    EXPECT_EQ(store_.rows(u"select * from gegujiankong where dm='SZ000001'"_s),
              QStringList{u"SZ000001|平安银行|0|0|股价|<|9.5|null|0|/声/s.mp3"_s});
    EXPECT_EQ(store_.rows(u"select dm from jiankonghq"_s), QStringList{u"SZ000001"_s});
    EXPECT_TRUE(!shownWindow<Form7>() && shownWindow<Form4>());
}

// With real timers: nobody refreshes, nobody presses a button.
class SessionTest : public MonitorWindowsTest {
protected:
    SessionTest() {
        store_.run({u"update tempcanshu set jiankongpinlu=1"_s});
        clock_.moment.setTime(QTime(8, 0));
        main_.Form_Load();
        main_.show();
        for (const QString& name : {u"Timer1"_s, u"Timer2"_s, u"Timer3"_s}) {
            main_.findChild<QTimer*>(name)->setInterval(2);
        }
        http_.answer = [this](const QString& path) {
            return answers_ ? std::optional(quoteReply(
                                  path, {{u"sh600000"_s, price_}, {u"sz000001"_s, price_}}))
                            : std::nullopt;
        };
    }
    static bool wait(const std::function<bool()>& condition) {
        return QTest::qWaitFor(condition, 10000);
    }
    bool ticks(int count) {
        int seen = 0;
        QObject context;
        QObject::connect(main_.findChild<AlarmDesk*>(), &AlarmDesk::ticks, &context,
                         [&] { ++seen; });
        return wait([&] { return seen >= count; });
    }

    bool answers_ = true;
    double price_ = 10.6;
    Form2 main_{environment_, windows_, desktop_};
};

TEST_F(SessionTest, MonitoringBeginsWithTheSessionAndAHandHoldsForItsDay) {
    ASSERT_TRUE(ticks(3));
    EXPECT_TRUE(http_.paths.isEmpty()) << "the market is closed";
    clock_.moment.setTime(QTime(9, 31));
    ASSERT_TRUE(wait([] { return shownWindow<Form4>() != nullptr; })) << "the alarm of 9:31";
    auto* manager = shownWindow<Form4>();
    press(manager, u"Command2"_s);
    ASSERT_TRUE(ticks(2));
    http_.paths.clear();
    clock_.moment.setTime(QTime(13, 30));
    ASSERT_TRUE(ticks(3));
    EXPECT_TRUE(http_.paths.isEmpty()) << "stopped by hand";
    clock_.moment = clock_.moment.addDays(1);
    EXPECT_TRUE(wait([this] { return !http_.paths.isEmpty(); })) << "a new day";
    EXPECT_EQ(manager->windowTitle(), u"监控管理(监控已启动)"_s);
}

TEST_F(SessionTest, AnAlarmOnAHeldStoreShowsItsWindowWhenThatIsFree) {
    std::optional<Connection> other(store_.stores.main.open());
    QObject::connect(main_.findChild<AlarmDesk*>(), &AlarmDesk::fired, &main_,
                     [&] { other->execute(u"begin exclusive"_s); });
    clock_.moment.setTime(QTime(9, 31));
    ASSERT_TRUE(wait([this] { return !notifier_.notes.isEmpty(); }));
    ASSERT_TRUE(ticks(3));
    EXPECT_FALSE(shownWindow<Form4>());
    other.reset();
    EXPECT_TRUE(wait([] { return shownWindow<Form4>() != nullptr; }));
    EXPECT_TRUE(failures_.texts.isEmpty());
}

TEST_F(SessionTest, AnAlarmIsToldMarkedAndTintedUntilLookedAt) {
    QMenu menu;
    menu.addAction(u"entry"_s);
    menu.popup({});
    clock_.moment.setTime(QTime(9, 31));
    ASSERT_TRUE(wait([this] { return !sound_.played.isEmpty(); }));
    EXPECT_EQ(sound_.played, QStringList{u"/声/t.mp3|20"_s});
    EXPECT_EQ(child<QLabel>(&main_, u"soundFile"_s)->text(), u"t.mp3"_s);
    EXPECT_EQ(notifier_.notes, QStringList{u"主题报警|银行 涨幅 6 > 5"_s});
    EXPECT_TRUE(menu.isVisible() && !shownWindow<Form4>()) << "it would close the menu";
    menu.close();
    ASSERT_TRUE(wait([] { return shownWindow<Form4>() != nullptr; }));
    form_ = shownWindow<Form4>();
    const auto tinted = [this] {
        return view().model()->index(0, 1).data(ResultGrid::BackColourRole).isValid();
    };
    EXPECT_TRUE(tinted());
    choose(u"MSHFlexGrid2"_s, u"修改监控2"_s);
    press(shownWindow<Form7>(), u"Command1"_s);
    deleteClosedWindows();
    form_ = shownWindow<Form4>();
    EXPECT_TRUE(tinted()) << "the window that the editor opens anew doesn't take it away";
    choose(u"MSHFlexGrid2"_s, u"删除监控2"_s);
    EXPECT_TRUE(tinted()) << "nor does a list that is filled anew";
    clickCell(view(), 1, 1);
    EXPECT_FALSE(tinted());
    auto* stopPlaying = child<QAction>(&main_, u"停止播放"_s);
    EXPECT_TRUE(stopPlaying->isEnabled());
    stopPlaying->trigger();
    EXPECT_FALSE(child<QWidget>(&main_, u"WindowsMediaPlayer1"_s)->isVisible());
}

// Notes when banners come up: on this platform the manager takes the focus, which ends them.
class SeenBanners : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* banner =
            event->type() == QEvent::Show ? qobject_cast<AlarmBanner*>(watched) : nullptr;
        if (banner) {
            last = banner;
            texts << banner->text();
        }
        return false;
    }

    QPointer<AlarmBanner> last;
    QStringList texts;
};

TEST_F(SessionTest, WhoIsElsewhereSeesABannerUntilHeTurnsToTheAlarm) {
    SeenBanners seen;
    qApp->installEventFilter(&seen);
    main_.hide();
    price_ = 10;
    clock_.moment.setTime(QTime(9, 31));
    ASSERT_TRUE(ticks(5));
    price_ = 10.6;
    ASSERT_TRUE(wait([&] { return !seen.texts.isEmpty(); }));
    EXPECT_TRUE(seen.texts.first().contains(u"银行 涨幅 6 > 5"_s));
    EXPECT_TRUE(wait([&] { return !seen.last->isVisible(); })) << "the manager has the keyboard";
    auto* stopPlaying = child<QAction>(&main_, u"停止播放"_s);
    until([&] { return stopPlaying->isEnabled(); });
    seen.last->show();
    stopPlaying->trigger();
    EXPECT_FALSE(seen.last->isVisible());
    closeWindows();
    seen.last->show();
    QTest::mouseClick(seen.last, Qt::LeftButton);
    EXPECT_FALSE(seen.last->isVisible());
    EXPECT_TRUE(shownWindow<Form4>());
}

TEST_F(SessionTest, QuotesThatStayAwayAreTold) {
    answers_ = false;
    clock_.moment.setTime(QTime(9, 31));
    ASSERT_TRUE(ticks(5));
    const QString words = u"09:31:00 起没有新行情"_s;
    form_ = &main_;
    EXPECT_EQ(label(u"quotesLine"_s), u"监控 "_s + words);
    child<QAction>(&main_, u"监控管理"_s)->trigger();
    EXPECT_EQ(shownWindow<Form4>()->windowTitle(), u"监控管理(监控已启动)  "_s + words);
    answers_ = true;
    price_ = 10;
    const auto quotesCome = [this] { return label(u"quotesLine"_s).isEmpty(); };
    EXPECT_TRUE(wait(quotesCome));
    EXPECT_EQ(shownWindow<Form4>()->windowTitle(), u"监控管理(监控已启动)"_s);

    // Polls that fail on a store which another program holds bring none either.
    const Impatience impatience;
    std::optional<Connection> other(held(store_.stores.main));
    EXPECT_TRUE(wait([&] { return !quotesCome(); }));
    EXPECT_EQ(shownWindow<Form4>()->windowTitle(), u"监控管理(监控已启动)  "_s + words);
    other.reset();
    EXPECT_TRUE(wait(quotesCome));
}

}  // namespace guanchao
