// The box in which a stock is typed, under real keys.
#include "grid/picker_box.h"

#include <QSignalSpy>
#include <QTest>

#include "tests/support/store_test.h"

namespace guanchao {

class PickerBoxTest : public StoreTest {
protected:
    PickerBoxTest() {
        store_.run(
            {u"insert into dmb(dm,numdm,jc,shenmu) values('SH600000','600000','浦发银行','pfyh'),"
             u"('SH600519','600519','贵州茅台','gzmt')"_s});
        window_.resize(600, 400);
        box_.setGeometry(50, 200, 120, 24);
        window_.show();
        window_.activateWindow();
        box_.setFocus();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
    }

    QStringList lines() const {
        QStringList lines;
        for (int row = 0; list_.isVisible() && row < list_.count(); ++row) {
            lines << list_.item(row)->text();
        }
        return lines;
    }
    void key(Qt::Key key) {
        QTest::keyClick(list_.hasFocus() ? &list_ : window_.focusWidget(), key);
    }
    void type(const QString& text) {
        box_.clear();
        QTest::keyClicks(&box_, text);
    }

    QWidget window_;
    QLineEdit box_{&window_};
    QLineEdit nextBox_{&window_};
    QListWidget list_{&window_};
    PickerBox picker_{box_, list_, store_.stores.main, nullptr};
    QSignalSpy chosen_{&picker_, &PickerBox::chosen};
};

TEST_F(PickerBoxTest, KeysGoIntoTheListTakeALineOrLeaveIt) {
    type(u"600"_s);
    EXPECT_EQ(lines(), QStringList({u"SH600000  浦发银行"_s, u"SH600519  贵州茅台"_s}));
    EXPECT_EQ(list_.geometry().topLeft(), QPoint(50, 224)) << "right under the box";
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    EXPECT_EQ(box_.text(), u"SH600519"_s);
    EXPECT_EQ(chosen_.count(), 1);
    EXPECT_EQ(lines(), QStringList());
    EXPECT_TRUE(box_.hasFocus());
    QSignalSpy returns(&box_, &QLineEdit::returnPressed);
    for (const bool inTheList : {false, true}) {
        type(u"600"_s);
        if (inTheList) {
            key(Qt::Key_Down);
        }
        key(Qt::Key_Escape);
        EXPECT_EQ(lines(), QStringList());
        EXPECT_TRUE(box_.hasFocus());
    }
    key(Qt::Key_Return);
    EXPECT_EQ(returns.count(), 1);
    EXPECT_EQ(box_.text(), u"600"_s);
    EXPECT_EQ(chosen_.count(), 1);
}

TEST_F(PickerBoxTest, AStoreThatAnotherHoldsIsReadWhenItIsFree) {
    std::optional<Connection> other(held(store_.stores.main));
    type(u"6005"_s);
    EXPECT_EQ(lines(), QStringList());
    other.reset();
    until([this] { return lines().size() == 1; });
}

TEST_F(PickerBoxTest, WholeLinesStandAboveAndAClickTakesOne) {
    picker_.showWholeLinesAbove();
    picker_.showAtMost(1);
    type(u"600"_s);
    QTest::mouseClick(&box_, Qt::LeftButton);
    EXPECT_EQ(lines(), QStringList{u"SH600000  浦发银行"_s});
    EXPECT_EQ(list_.geometry().bottom() + 1, box_.y());
    QTest::mouseClick(list_.viewport(), Qt::LeftButton, {},
                      list_.visualItemRect(list_.item(0)).center());
    EXPECT_EQ(box_.text(), u"SH600000  浦发银行"_s);
    EXPECT_EQ(chosen_.count(), 1);
    type(u"600"_s);
    QTest::mouseClick(&window_, Qt::LeftButton, {}, {3, 3});
    EXPECT_EQ(lines(), QStringList());
    type(u"600"_s);
    QTest::keyClick(&box_, Qt::Key_Tab);
    EXPECT_EQ(lines(), QStringList());
}

}  // namespace guanchao
