#include "research/form24.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

#include "grid/grid_view.h"
#include "research/history_plot.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_environment.h"
#include "tests/support/test_windows.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

class Form24Test : public ::testing::Test, protected TestEnvironment {
protected:
    Form24Test() {
        globals_.dangqianzhuti = u"银行"_s;
        store_.addMember(u"银行"_s, u"SH600000"_s);
        store_.run(
            {u"insert into geguhq values('SH000001','2026-11-19 00:00:00',1,3000),"
             u"('SH000001','2026-11-20 00:00:00',-2.5,3010),"
             u"('SH600000','2026-11-20 00:00:00',4,10)"_s});
        open();
    }
    ~Form24Test() override { pump_.onRun = {}; }

    void open() {
        windows_.openAnew<Form24>();
        form_ = shownWindow<Form24>();
    }

    template <typename Widget>
    Widget* find(const QString& name) {
        auto* widget = form_->findChild<Widget*>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }
    QString box(const QString& name) { return find<QComboBox>(name)->currentText(); }

    QPointer<Form24> form_;
};

TEST_F(Form24Test, TheLoadTakesTheThemeAndNinetyDays) {
    EXPECT_EQ(form_->windowTitle(), u"主题历史涨幅与大盘对比"_s);
    EXPECT_EQ(find<QLineEdit>(u"Text1"_s)->text(), u"银行"_s);
    EXPECT_EQ(QStringList({box(u"Combo5"_s), box(u"Combo6"_s), box(u"Combo7"_s)}),
              QStringList({u"2026"_s, u"8"_s, u"26"_s}));
    EXPECT_EQ(QStringList({box(u"Combo8"_s), box(u"Combo9"_s), box(u"Combo10"_s)}),
              QStringList({u"2026"_s, u"11"_s, u"24"_s}));
    EXPECT_EQ(find<QLabel>(u"Label3"_s)->text(), u"主题总涨幅-大盘总涨幅=涨幅差"_s);
    EXPECT_FALSE(find<QLabel>(u"Label4"_s)->isVisible());
    EXPECT_TRUE(find<QPushButton>(u"Command9"_s)->isDefault());
}

TEST_F(Form24Test, ARunShowsItsWayItsLineItsTableAndItsPlot) {
    auto* button = find<QPushButton>(u"Command9"_s);
    pump_.onRun = [&] {
        EXPECT_FALSE(button->isEnabled());
        EXPECT_EQ(find<QLabel>(u"Label4"_s)->text(), u"正在下载数据，请稍等。。。"_s);
        EXPECT_TRUE(find<QLabel>(u"Label4"_s)->isVisible());
    };
    button->click();
    EXPECT_TRUE(button->isEnabled());
    EXPECT_FALSE(find<QLabel>(u"Label4"_s)->isVisible());
    EXPECT_EQ(find<QLabel>(u"step"_s)->text(), u"2026-11-20"_s);
    EXPECT_EQ(find<QLabel>(u"Label3"_s)->text(), u"主题总涨幅(4)-大盘总涨幅(-1.5)=涨幅差(5.5)"_s);
    auto* view = find<GridView>(u"MSHFlexGrid1"_s);
    EXPECT_EQ(view->model()->rowCount(), 2);
    EXPECT_EQ(view->model()->index(0, 3).data(ResultGrid::BackColourRole), riseColour);
    EXPECT_EQ(view->model()->index(0, 4).data(ResultGrid::BackColourRole), fallColour);
    auto* plot = find<HistoryPlot>(u"plot"_s);
    QTest::keyClick(plot, Qt::Key_Left);
    EXPECT_EQ(plot->chosenText(), u"2026-11-20  主题 4.00%  大盘 -1.50%  差 5.50%"_s);
    QTest::mouseMove(plot->viewport(), QPoint(1, 1));
    QTest::mouseMove(plot->viewport(), QPoint(60, 60));
    EXPECT_EQ(plot->chosenText(), u"2026-11-19  主题 0.00%  大盘 1.00%  差 -1.00%"_s)
        << "left of the first day";
}

TEST_F(Form24Test, StopAndEscEndARunAndLeaveTheWindow) {
    auto* stop = find<QPushButton>(u"stop"_s);
    EXPECT_FALSE(stop->isEnabled());
    for (const bool byKey : {false, true}) {
        pump_.onRun = [&] {
            EXPECT_TRUE(stop->isEnabled());
            byKey ? QTest::keyClick(form_.data(), Qt::Key_Escape) : stop->click();
        };
        find<QPushButton>(u"Command9"_s)->click();
        EXPECT_EQ(store_.rows(u"select count(*) from zhutidapanhq"_s), QStringList{u"0"_s});
        EXPECT_TRUE(form_->isVisible());
        EXPECT_TRUE(find<QPushButton>(u"Command9"_s)->isEnabled());
    }
}

// Closed by the user, and by the opening of another: the run ends, and only then the window.
TEST_F(Form24Test, AWindowThatClosesDuringARunOutlivesIt) {
    const QPointer old(form_);
    pump_.onRun = [&] {
        pump_.onRun = {};
        form_->close();
        open();
        deleteClosedWindows();
        ASSERT_FALSE(old.isNull());
        EXPECT_FALSE(old->isVisible());
    };
    find<QPushButton>(u"Command9"_s)->click();
    deleteClosedWindows();
    EXPECT_TRUE(old.isNull());
    EXPECT_TRUE(form_->isVisible());
    EXPECT_EQ(store_.rows(u"select count(*) from zhutidapanhq"_s), QStringList{u"0"_s});
}

}  // namespace guanchao
