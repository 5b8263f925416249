#include "themes/form30.h"

#include <QTabBar>

#include "market/form21.h"
#include "monitor/form7.h"
#include "tests/support/window_test.h"

namespace guanchao {

using namespace std::chrono_literals;

class Form30Test : public WindowTest {
protected:
    Form30Test() {
        int gain = 9;
        for (const QString& dm : {u"SH600000"_s, u"SH600519"_s, u"SZ000001"_s, u"SZ000002"_s}) {
            store_.addCode(dm, u"股"_s + dm.last(1), 10, --gain);
            store_.run({u"insert into zixuangu(dm) values('%1')"_s.arg(dm)});
        }
        open<Form30>();
        form_->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form_));
    }

    // The last digits of the codes, as they are shown.
    QString shown() const {
        QString digits;
        for (int row = 1; row < grid().rows(); ++row) {
            digits += grid().textMatrix(row, 1).last(1);
        }
        return digits;
    }
    void key(int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&view(), static_cast<Qt::Key>(key), modifiers);
    }
    // From the middle of a row to the upper or lower half of another.
    void draw(int row, int to, bool below, bool leaves = false) {
        QWidget* ground = view().viewport();
        const QPoint from = cellOf(view(), row, 2);
        const QPoint place = cellOf(view(), to, 2) + QPoint(0, below ? 5 : -5);
        QTest::mousePress(ground, Qt::LeftButton, {}, from);
        for (const QPoint& it : {from + QPoint(0, 2), (from + place) / 2, place}) {
            QMouseEvent move(QEvent::MouseMove, it, ground->mapToGlobal(it), Qt::NoButton,
                             Qt::LeftButton, {});
            QApplication::sendEvent(ground, &move);
        }
        if (leaves) {
            key(Qt::Key_Escape);
        }
        QTest::mouseRelease(ground, Qt::LeftButton, {}, place);
    }
    QTabBar& tabs() { return *find<QTabBar>(u"lists"_s); }
    void create(const QString& name) {
        dialogs_.typed = name;
        trigger(u"新建列表"_s);
    }
    QComboBox& interval() { return *find<QComboBox>(u"interval"_s); }
};

TEST_F(Form30Test, MouseAndKeysMoveRowsUnlessAHeaderSortsThem) {
    draw(1, 3, true);
    EXPECT_EQ(shown(), u"9102"_s);
    draw(4, 1, false);
    EXPECT_EQ(shown(), u"2910"_s);
    EXPECT_EQ(grid().markedRow(), 1) << "what is moved stays the chosen one";
    draw(1, 4, true, true);
    EXPECT_EQ(shown(), u"2910"_s) << "Esc lets it stay";
    EXPECT_TRUE(form_->isVisible());
    key(Qt::Key_Down, Qt::ShiftModifier);
    key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(shown(), u"1290"_s) << "two at once";
    key(Qt::Key_Down, Qt::AltModifier);
    key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(shown(), u"1029"_s) << "down to the end";
    key(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(shown(), u"1290"_s);
    clickHeader(view(), 1);
    EXPECT_EQ(shown(), u"0912"_s);
    draw(1, 3, true);
    clickCell(view(), 1, 2);
    key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(shown(), u"0912"_s);
    EXPECT_TRUE(label(u"words"_s).contains(u"现在按“代码”排序"_s));
    click(u"ownOrder"_s);
    EXPECT_EQ(shown(), u"1290"_s);
    EXPECT_EQ(label(u"words"_s) + (button(u"ownOrder"_s)->isEnabled() ? u"!"_s : u""_s), QString());
}

TEST_F(Form30Test, ANoteIsWrittenInItsCellWhateverComesMeanwhileOrToldIfItCannotBe) {
    clickCell(view(), 2, 2);
    key(Qt::Key_F2);
    auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    EXPECT_EQ(editor->accessibleName(), u"备注"_s);
    QTest::keyClicks(editor, u"wait"_s);
    store_.run({u"update dmb set zhangfu=20 where dm='SZ000002'"_s});
    static_cast<Form30*>(form_.data())->refresh();
    EXPECT_EQ(shown(), u"0912"_s) << "nothing moves under the hand";
    QTest::keyClick(editor, Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([this] { return shown() == u"2091"_s; })) << shown().toStdString();
    EXPECT_EQ(store_.rows(u"select * from gegubeizhu"_s), QStringList{u"SH600519|wait"_s});
    EXPECT_FALSE(shownWindow<Form21>()) << "the key was the editor's";
    EXPECT_EQ(grid().textMatrix(3, 13), u"wait"_s);
    clickCell(view(), 3, 2);
    QTest::mouseDClick(view().viewport(), Qt::LeftButton, {}, cellOf(view(), 3, 2));
    EXPECT_EQ(lineEdit(shownWindow<Form21>(), u"Text7"_s)->text(), u"SH600519"_s);
    form_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form_));
    store_.refuse(u"insert on gegubeizhu"_s);
    clickCell(view(), 1, 2);
    key(Qt::Key_F2);
    QTest::keyClicks(QApplication::focusWidget(), u"wait"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([this] { return failures_.told.size() == 1; }));
    EXPECT_TRUE(failures_.told[0].contains(u"没有写入的备注：wait"_s));
}

TEST_F(Form30Test, ListsAreTabsThatRowsGoBetween) {
    create(u"短&线"_s);
    EXPECT_EQ(tabs().tabText(tabs().currentIndex()) + shown(), u"短&&线"_s);
    dialogs_.typed = u"sz000002"_s;
    trigger(u"添加自选股"_s);
    EXPECT_EQ(shown(), u"2"_s);
    key(Qt::Key_Tab, Qt::ControlModifier);
    ASSERT_EQ(tabs().currentIndex(), 0) << "round to the first";
    clickCell(view(), 1, 2);
    key(Qt::Key_Down, Qt::ShiftModifier);
    clickCell(view(), 2, 2, Qt::RightButton);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    for (const QAction* entry : menu->actions()) {
        if (entry->menu()) {
            chooseEntry(*entry->menu(), u"移动到“短&&线”"_s);
        }
    }
    menu->close();
    EXPECT_EQ(shown(), u"12"_s);
    EXPECT_EQ(label(u"words"_s), u"移动了 2 只股票到“短&线”"_s);
    tabs().setCurrentIndex(1);
    EXPECT_EQ(shown(), u"209"_s);
    trigger(u"删除列表"_s);
    EXPECT_EQ(tabs().count(), 1);
    EXPECT_FALSE(find<QAction>(u"删除列表"_s)->isEnabled());
    click(u"undo"_s);
    ASSERT_TRUE(QTest::qWaitFor([this] { return tabs().count() == 2; }));
    open<Form30>();
    EXPECT_EQ(tabs().currentIndex(), 0) << "the list that was shown last";
    tabs().setCurrentIndex(1);
    open<Form30>();
    EXPECT_EQ(shown(), u"209"_s);
}

TEST_F(Form30Test, AFileComesInAndGoesOutInOrder) {
    create(u"甲"_s);
    dialogs_.picked = store_.folder() + u"x.EBK"_s;
    writeFile(dialogs_.picked, "\r\n0000002\r\n1600519\r\n1699999\r\n");
    trigger(u"导入列表"_s);
    ASSERT_TRUE(QTest::qWaitFor([this] { return shown() == u"29"_s; }));
    EXPECT_TRUE(dialogs_.shown.last().contains(u"代码表里没有的 1 只，没有添加：SH699999"_s));
    clipboard_.setText(u"代码\t名称\n000001\t股1\n"_s);
    key(Qt::Key_V, Qt::ControlModifier);
    ASSERT_TRUE(QTest::qWaitFor([this] { return shown() == u"291"_s; }))
        << "as a spreadsheet copies";
    draw(2, 1, false);
    dialogs_.picked = store_.folder() + u"y.blk"_s;
    trigger(u"导出列表"_s);
    EXPECT_EQ(contentOf(dialogs_.picked), "1600519\r\n0000002\r\n0000001\r\n");
    dialogs_.picked = store_.folder() + u"y.csv"_s;
    trigger(u"导出列表"_s);
    EXPECT_TRUE(contentOf(dialogs_.picked).endsWith("股9,\r\nSZ000002,股2,\r\nSZ000001,股1,\r\n"));
}

TEST_F(Form30Test, ARowsMonitorIsShownAndChangedFromHere) {
    store_.run(
        {u"insert into gegujiankong(dm,jc,leixin,bijiaofu,baojinzhi) values"
         u"('SH600519','股9','股价','<',9)"_s});
    QEvent comesBack(QEvent::WindowActivate);
    QApplication::sendEvent(form_, &comesBack);
    EXPECT_EQ(grid().textMatrix(2, 12), u"股价<9"_s);
    clickCell(view(), 2, 2, Qt::RightButton);
    EXPECT_TRUE(popup().contains(u"修改个股监控"_s));
    trigger(u"修改个股监控"_s);
    form_ = shownWindow<Form7>();
    EXPECT_EQ(form_->windowTitle() + text(u"Text1"_s) + text(u"Text2"_s),
              u"修改个股监控SH6005199"_s);
}

TEST_F(Form30Test, AListAsksForItsOwnCodesWhileTheMarketIsOpenAndNobodyElseWrites) {
    store_.run({u"insert into zixuangu(dm) values('SH699999')"_s,
                u"insert into zixuanzugu values('短线','SZ000001')"_s,
                u"insert into tuishi(dm) values('SZ000002')"_s});
    globals_.hqmang = 1;
    static_cast<Form30*>(form_.data())->setSecond(1ms);
    interval().setCurrentIndex(1);
    int looks = 0;
    clock_.onNow = [&looks] { ++looks; };
    until([&] { return looks > 4; });
    globals_.hqmang = 0;
    clock_.moment = clock_.moment.addDays(4);
    until([&] { return looks > 8; });
    clock_.onNow = nullptr;
    EXPECT_EQ(http_.paths, QStringList()) << "on a Saturday";
    clock_.moment = clock_.moment.addDays(2);
    until([this] { return !http_.paths.isEmpty(); });
    EXPECT_EQ(http_.paths[0], u"/list=sh600000,sh600519,sz000001,"_s);
}

TEST_F(Form30Test, QuotesComeAtTheIntervalUntilTheWindowGoes) {
    answerQuotes({{u"sz000001"_s, 11}});
    static_cast<Form30*>(form_.data())->setSecond(1ms);
    EXPECT_EQ(http_.paths, QStringList()) << "off at first";
    interval().setCurrentIndex(1);
    ASSERT_TRUE(QTest::qWaitFor([this] { return shown() == u"1092"_s; })) << "the best gain first";
    ASSERT_TRUE(QTest::qWaitFor([this] { return http_.paths.size() > 2; }));
    EXPECT_EQ(label(u"age"_s), u"行情：刚刚"_s);
    const auto answer = std::exchange(http_.answer, nullptr);
    until([this] { return label(u"words"_s).startsWith(u"自动更新：没有读到行情"_s); });
    http_.answer = answer;
    until([this] { return label(u"words"_s).isEmpty(); });
    http_.gate = std::make_shared<Later<bool>>();
    http_.paths.clear();
    until([this] { return !http_.paths.isEmpty(); });
    form_->close();
    deleteClosedWindows();
    store_.run({u"update dmb set sp=1"_s});
    http_.gate->deliver(true);
    EXPECT_EQ(store_.rows(u"select distinct sp from dmb"_s), QStringList{u"1"_s});
    open<Form30>();
    EXPECT_EQ(interval().currentText(), u"每5秒"_s);
}

}  // namespace guanchao
