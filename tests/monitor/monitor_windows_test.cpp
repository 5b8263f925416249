#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QScopeGuard>
#include <QTest>
#include <QTimer>

#include "app/form2.h"
#include "grid/grid_view.h"
#include "monitor/form4.h"
#include "monitor/form7.h"
#include "monitor/form8.h"
#include "tests/support/qt_printers.h"
#include "tests/support/quote_reply.h"
#include "tests/support/test_environment.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

class MonitorWindowsTest : public ::testing::Test, protected TestEnvironment {
protected:
    MonitorWindowsTest() {
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 10, 0);
        store_.addCode(u"SZ000001"_s, u"平安银行"_s, 10, 0);
        store_.addMember(u"银行"_s, u"SH600000"_s);
        store_.addMember(u"银行"_s, u"SZ000001"_s);
        store_.run({
            u"insert into zhutijiankong(zhutiname,bijiaofu,baojinzhi,tanchuform,yinyue)"
            u" values('银行','>',5,1,'/声/t.mp3')"_s,
            u"insert into gegujiankong(dm,jc,leixin,bijiaofu,baojinzhi)"
            u" values('SH600000','浦发银行','股价','<',9)"_s,
            u"insert into jiankonghq(dm,jc) values('SH600000','浦发银行')"_s,
            u"insert into jiankonghq(dm,jc) values('SZ000001','平安银行')"_s,
        });
        dialogs_.shown.clear();
    }

    template <typename Form>
    Form* openAnew() {
        windows_.openAnew<Form>();
        QApplication::processEvents();
        return shownWindow<Form>();
    }

    static QString label(QWidget* form, const QString& name) {
        return form->findChild<QLabel*>(name)->text();
    }
    static void leave(QLineEdit* box) {
        QFocusEvent event(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(box, &event);
        QApplication::processEvents();
    }
    // Presses the right button on the first row and closes the popup that it opens.
    static void popup(QWidget* form, const QString& gridName) {
        clickCell(*form->findChild<GridView*>(gridName), 1, 1, Qt::RightButton);
        QWidget* menu = QApplication::activePopupWidget();
        ASSERT_TRUE(menu);
        menu->close();
    }
    QStringList monitored() {
        return store_.rows(
            u"select zhutiname from zhutijiankong union all select dm from"
            u" gegujiankong"_s);
    }
};

TEST_F(MonitorWindowsTest, TheManagerShowsTogglesAndHandsRowsToTheEditors) {
    auto* form = openAnew<Form4>();
    EXPECT_EQ(form->windowTitle(), u"监控管理(监控未启动)"_s);
    press(form, u"Command2"_s);
    EXPECT_EQ(form->windowTitle(), u"监控管理(监控已启动)"_s);
    EXPECT_EQ(form->findChild<QPushButton*>(u"Command2"_s)->text(), u"停止监控"_s);
    EXPECT_EQ(globals_.jiankongkaiqi, 1);
    popup(form, u"MSHFlexGrid1"_s);
    EXPECT_EQ(form->findChild<GridView*>(u"MSHFlexGrid1"_s)->toolTip(), u"/声/t.mp3"_s);
    trigger(form, u"修改监控"_s);
    ASSERT_TRUE(shownWindow<Form8>());
    EXPECT_EQ(shownWindow<Form8>()->windowTitle(), u"修改主题监控"_s);
    popup(form, u"MSHFlexGrid2"_s);
    trigger(form, u"修改监控2"_s);
    ASSERT_TRUE(shownWindow<Form7>());
    EXPECT_EQ(shownWindow<Form7>()->windowTitle(), u"修改个股监控"_s);
    EXPECT_EQ(shownWindow<Form7>()->findChild<QComboBox*>(u"Combo2"_s)->currentText(), u"股价"_s);
    trigger(form, u"添加监控"_s);
    EXPECT_EQ(shownWindow<Form8>()->windowTitle(), u"添加主题监控"_s);
    const QStringList all = monitored();
    press(form, u"Command1"_s);
    EXPECT_EQ(monitored(), QStringList());
    EXPECT_EQ(label(form, u"Label3"_s), u"已监控0只股票。"_s);
    EXPECT_TRUE(dialogs_.shown.isEmpty());
    press(form, u"undo"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return monitored() == all; }));
    ASSERT_TRUE(QTest::qWaitFor([&] { return label(form, u"Label3"_s) != u"已监控0只股票。"_s; }));
}

TEST_F(MonitorWindowsTest, AFrequencyCountsWhenItsBoxIsLeftAndNotWhenTheWindowCloses) {
    auto* form = openAnew<Form4>();
    QLineEdit* text = lineEdit(form, u"Text1"_s);
    text->setText(u"1"_s);
    leave(text);
    EXPECT_EQ(text->text(), u"20"_s);
    EXPECT_EQ(dialogs_.shown.size(), 1);
    text->setText(u"7.5"_s);
    EXPECT_EQ(label(form, u"Label2"_s), u"秒监控一次  此频率最多监控8只股票。"_s);
    leave(text);
    const std::function<void()> closings[] = {
        [&] { QTest::keyClick(text, Qt::Key_Escape); },
        [&] { form->close(); },
        [&] { windows_.openAnew<Form4>(); },
        [&] { QCoro::waitFor(openWindows_.closeAll({})); },
    };
    for (const auto& closed : closings) {
        form = openAnew<Form4>();
        form->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form));
        text = lineEdit(form, u"Text1"_s);
        text->setFocus();
        QTest::keyClicks(text, u"0"_s);
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
    auto* form = openAnew<Form7>();
    auto* list = form->findChild<QListWidget*>(u"List1"_s);
    EXPECT_EQ(lineEdit(form, u"Text4"_s)->text(), u"浦发银行"_s);
    EXPECT_FALSE(list->isVisible()) << "though the code was put into the box";
    lineEdit(form, u"Text1"_s)->setText(u"sz0"_s);
    QTest::mouseClick(form, Qt::LeftButton, {}, QPoint(3, form->height() - 3));
    EXPECT_FALSE(list->isVisible());
    lineEdit(form, u"Text1"_s)->setText(u"sz00"_s);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(0)).center());
    EXPECT_FALSE(list->isVisible());
    press(form, u"Command3"_s);
    EXPECT_EQ(dialogs_.shown.takeLast(), u"观潮台|没有选择文件。"_s);
    dialogs_.picked = u"/声/s.mp3"_s;
    press(form, u"Command3"_s);
    form->findChild<QComboBox*>(u"Combo2"_s)->setCurrentText(u"股价"_s);
    form->findChild<QComboBox*>(u"Combo1"_s)->setCurrentText(u"<"_s);
    lineEdit(form, u"Text2"_s)->setText(u"9.5"_s);
    form->findChild<QCheckBox*>(u"Check1"_s)->setChecked(false);
    press(form, u"Command1"_s);
    EXPECT_EQ(store_.rows(u"select * from gegujiankong where dm='SZ000001'"_s),
              QStringList{u"SZ000001|平安银行|0|0|股价|<|9.5|null|0|/声/s.mp3"_s});
    EXPECT_FALSE(shownWindow<Form7>());
    EXPECT_TRUE(shownWindow<Form4>());
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
    EXPECT_EQ(manager->windowTitle(), u"监控管理(监控已启动)"_s);
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
    EXPECT_EQ(label(&main_, u"soundFile"_s), u"t.mp3"_s);
    EXPECT_EQ(notifier_.notes, QStringList{u"主题报警|银行 涨幅 6 > 5"_s});
    EXPECT_TRUE(menu.isVisible());
    EXPECT_FALSE(shownWindow<Form4>()) << "it would close the menu";
    menu.close();
    ASSERT_TRUE(wait([] { return shownWindow<Form4>() != nullptr; }));
    auto* manager = shownWindow<Form4>();
    auto* view = manager->findChild<GridView*>(u"MSHFlexGrid1"_s);
    const auto tinted = [&] {
        return view->model()->index(0, 1).data(ResultGrid::BackColourRole).isValid();
    };
    EXPECT_TRUE(tinted());
    popup(manager, u"MSHFlexGrid2"_s);
    trigger(manager, u"修改监控2"_s);
    press(shownWindow<Form7>(), u"Command1"_s);
    deleteClosedWindows();
    manager = shownWindow<Form4>();
    ASSERT_TRUE(manager);
    view = manager->findChild<GridView*>(u"MSHFlexGrid1"_s);
    EXPECT_TRUE(tinted()) << "the window that the editor opens anew doesn't take it away";
    popup(manager, u"MSHFlexGrid2"_s);
    trigger(manager, u"删除监控2"_s);
    EXPECT_TRUE(tinted()) << "nor does a list that is filled anew";
    clickCell(*view, 1, 1, Qt::LeftButton);
    EXPECT_FALSE(tinted());
    auto* stopPlaying = main_.findChild<QAction*>(u"停止播放"_s);
    EXPECT_TRUE(stopPlaying->isEnabled());
    stopPlaying->trigger();
    EXPECT_FALSE(main_.findChild<QWidget*>(u"WindowsMediaPlayer1"_s)->isVisible());
    EXPECT_FALSE(stopPlaying->isEnabled());
}

TEST_F(SessionTest, QuotesThatStayAwayAreTold) {
    answers_ = false;
    clock_.moment.setTime(QTime(9, 31));
    ASSERT_TRUE(ticks(5));
    const QString words = u"09:31:00 起没有新行情"_s;
    EXPECT_EQ(label(&main_, u"quotesLine"_s), u"监控 "_s + words);
    trigger(&main_, u"监控管理"_s);
    EXPECT_EQ(shownWindow<Form4>()->windowTitle(), u"监控管理(监控已启动)  "_s + words);
    answers_ = true;
    price_ = 10;
    const auto quotesCome = [this] { return label(&main_, u"quotesLine"_s).isEmpty(); };
    EXPECT_TRUE(wait(quotesCome));
    EXPECT_EQ(shownWindow<Form4>()->windowTitle(), u"监控管理(监控已启动)"_s);

    // Polls that fail on a store which another program holds bring none either.
    Connection::setBusyTimeout(std::chrono::milliseconds(1));
    const auto restore = qScopeGuard([] { Connection::setBusyTimeout(std::chrono::seconds(5)); });
    std::optional<Connection> other(store_.stores.main.open());
    other->execute(u"begin exclusive"_s);
    EXPECT_TRUE(wait([&] { return !quotesCome(); }));
    EXPECT_EQ(shownWindow<Form4>()->windowTitle(), u"监控管理(监控已启动)  "_s + words);
    other.reset();
    EXPECT_TRUE(wait(quotesCome));
}

}  // namespace guanchao
