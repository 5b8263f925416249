#include "research/form24.h"

#include "research/history_plot.h"
#include "tests/support/outcome_of.h"
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

TEST_F(Form24Test, ARunOfNinetyDaysShowsItsLineItsTableAndItsPlot) {
    http_.onGet = [this] {
        EXPECT_FALSE(button(u"Command9"_s)->isEnabled());
        EXPECT_TRUE(find<QLabel>(u"Label4"_s)->isVisible());
    };
    runToItsEnd();
    EXPECT_FALSE(find<QLabel>(u"Label4"_s)->isVisible());
    EXPECT_EQ(label(u"Label3"_s), u"主题总涨幅(4)-大盘总涨幅(-1.5)=涨幅差(5.5)"_s);
    EXPECT_TRUE(label(u"missed"_s).startsWith(u"有 2 只的历史行情没有取到，按库里已有的对比。"_s));
    EXPECT_EQ(grid().rows(), 3);
    EXPECT_EQ(grid().index(0, 3).data(ResultGrid::BackColourRole), riseColour);
    EXPECT_EQ(grid().index(0, 4).data(ResultGrid::BackColourRole), fallColour);
    auto* plot = find<HistoryPlot>(u"plot"_s);
    QTest::keyClick(plot, Qt::Key_Left);
    EXPECT_EQ(plot->chosenText(), u"2026-11-20  主题 4.00%  大盘 -1.50%  差 5.50%"_s);
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
