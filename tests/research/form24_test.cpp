#include "research/form24.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>

#include "research/history_plot.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_environment.h"

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
        windows_.openAnew<Form24>();
        form_ = shownWindow<Form24>();
    }
    QPushButton* button(const QString& name) { return child<QPushButton>(form_, name); }
    QLabel* label(const QString& name) { return child<QLabel>(form_, name); }
    QStringList box(const QStringList& names) {
        QStringList texts;
        for (const QString& name : names) {
            texts << child<QComboBox>(form_, name)->currentText();
        }
        return texts;
    }

    Form24* form_ = nullptr;
};

TEST_F(Form24Test, ARunShowsItsWayItsLineItsTableAndItsPlot) {
    EXPECT_EQ(lineEdit(form_, u"Text1"_s)->text(), u"银行"_s);
    EXPECT_EQ(box({u"Combo5"_s, u"Combo6"_s, u"Combo7"_s}),
              QStringList({u"2026"_s, u"8"_s, u"26"_s}))
        << "ninety days";
    EXPECT_EQ(box({u"Combo8"_s, u"Combo9"_s, u"Combo10"_s}),
              QStringList({u"2026"_s, u"11"_s, u"24"_s}));
    EXPECT_FALSE(label(u"Label4"_s)->isVisible());
    pump_.onRun = [this] {
        EXPECT_FALSE(button(u"Command9"_s)->isEnabled());
        EXPECT_TRUE(label(u"Label4"_s)->isVisible());
    };
    button(u"Command9"_s)->click();
    EXPECT_TRUE(button(u"Command9"_s)->isEnabled());
    EXPECT_FALSE(label(u"Label4"_s)->isVisible());
    EXPECT_EQ(label(u"step"_s)->text(), u"2026-11-20"_s);
    EXPECT_EQ(label(u"Label3"_s)->text(), u"主题总涨幅(4)-大盘总涨幅(-1.5)=涨幅差(5.5)"_s);
    const QAbstractItemModel& grid = *child<GridView>(form_, u"MSHFlexGrid1"_s)->model();
    EXPECT_EQ(grid.rowCount(), 2);
    EXPECT_EQ(grid.index(0, 3).data(ResultGrid::BackColourRole), riseColour);
    EXPECT_EQ(grid.index(0, 4).data(ResultGrid::BackColourRole), fallColour);
    auto* plot = child<HistoryPlot>(form_, u"plot"_s);
    QTest::keyClick(plot, Qt::Key_Left);
    EXPECT_EQ(plot->chosenText(), u"2026-11-20  主题 4.00%  大盘 -1.50%  差 5.50%"_s);
}

TEST_F(Form24Test, StopAndEscEndARunAndLeaveTheWindow) {
    EXPECT_FALSE(button(u"stop"_s)->isEnabled());
    for (const bool byKey : {false, true}) {
        pump_.onRun = [&] {
            byKey ? QTest::keyClick(form_, Qt::Key_Escape) : button(u"stop"_s)->click();
        };
        button(u"Command9"_s)->click();
        EXPECT_EQ(store_.rows(u"select * from zhutidapanhq"_s), QStringList());
        EXPECT_TRUE(form_->isVisible());
        EXPECT_TRUE(button(u"Command9"_s)->isEnabled());
    }
}

}  // namespace guanchao
