#include "research/form24.h"

#include <QTabWidget>

#include "research/history_plot.h"
#include "research/line_choice.h"
#include "tests/support/window_test.h"

namespace guanchao {

class Form24Test : public WindowTest {
protected:
    Form24Test() {
        globals_.dangqianzhuti = u"银行"_s;
        store_.addMember(u"银行"_s, u"SH600000"_s);
        store_.run(
            {u"insert into geguhq values('SH000001','2026-11-19 00:00:00',1,3000),"
             u"('SH000001','2026-11-20 00:00:00',-2.5,3010),"
             u"('SH600000','2026-11-20 00:00:00',4,10)"_s});
        services_.history = {Service()};
        open<Form24>();
    }

    void runToItsEnd() {
        click(u"Command9"_s);
        until([this] { return button(u"Command9"_s)->isEnabled(); });
    }
};

TEST_F(Form24Test, TheSpaceBarSwitchesAMemberInThePlot) {
    runToItsEnd();
    EXPECT_TRUE(label(u"missed"_s).startsWith(u"有 2 只的历史行情没有取到"_s));
    auto* lines = find<LineChoice>(u"lines"_s);
    const auto isVisible = [this] {
        return find<HistoryPlot>(u"plot"_s)->chart()->series()[3]->isVisible();
    };
    EXPECT_FALSE(isVisible()) << "the first behind theme, market and difference";
    lines->setFocus();
    lines->setCurrentRow(3);
    QTest::keyClick(lines, Qt::Key_Space);
    EXPECT_TRUE(isVisible());
    runToItsEnd();
    EXPECT_TRUE(isVisible()) << "stays switched in the next run";
}

TEST_F(Form24Test, ATabRanksAllThemesAndEnterShowsOneOverWhatIsStored) {
    store_.addMember(u"白酒"_s, u"SH600519"_s);
    store_.run({u"insert into geguhq values('SH600519','2026-11-19 00:00:00',7,10)"_s});
    auto* tabs = find<QTabWidget>(u"tabs"_s);
    tabs->setCurrentIndex(2);
    until([this] { return button(u"rankAll"_s)->isEnabled(); });
    EXPECT_EQ(grid(u"weeks"_s).textMatrix(1, 1), u"白酒"_s);
    QTest::keyClick(&view(u"weeks"_s), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(tabs->currentIndex(), 1);
    EXPECT_EQ(grid(u"ranks"_s).rows(), 3);
    QTest::keyClick(&view(u"ranks"_s), Qt::Key_Down);
    QTest::keyClick(&view(u"ranks"_s), Qt::Key_Up);
    QTest::keyClick(&view(u"ranks"_s), Qt::Key_Return);
    until([this] { return button(u"Command9"_s)->isEnabled(); });
    EXPECT_EQ(tabs->currentIndex(), 0);
    EXPECT_EQ(text(u"Text1"_s), u"白酒"_s);
    EXPECT_EQ(label(u"Label3"_s), u"主题总涨幅(7)-大盘总涨幅(-1.5)=涨幅差(8.5)"_s);
    EXPECT_TRUE(http_.paths.isEmpty());
}

TEST_F(Form24Test, StopAndEscEndARunAndLeaveTheWindow) {
    for (const bool byKey : {false, true}) {
        http_.onGet = [&] {
            byKey ? QTest::keyClick(form_.data(), Qt::Key_Escape) : click(u"stop"_s);
        };
        runToItsEnd();
        EXPECT_EQ(store_.rows(u"select * from zhutidapanhq"_s), QStringList());
        EXPECT_TRUE(form_->isVisible());
    }
}

}  // namespace guanchao
