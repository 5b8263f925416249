// What the windows of the internet figures show while another program writes to the heat store: by
// their own timers, with an interval for tests.
#include <QComboBox>
#include <QScrollBar>
#include <QTabWidget>
#include <QThreadPool>

#include "frame/scatter_plot.h"
#include "heat/form25.h"
#include "heat/form31.h"
#include "heat/heat_map_window.h"
#include "tests/support/window_test.h"

namespace guanchao {

class HeatRefreshTest : public WindowTest {
protected:
    HeatRefreshTest() {
        runHeat(u"update canshu set iszidinyinum=0,zidinyinum=7"_s);
        runHeat(
            u"insert into xinwenshul(riqi,zhutiname,onecishu,allzhangfu) with recursive n(i) as"
            u" (select 1 union all select i+1 from n where i<80) select '2026-11-24 10:00:00',"
            u"printf('题%02d',i),i,100-i from n"_s);
        runHeat(u"insert into gongsixinwen(riqi,dm,jc) values('2026-11-24','SH600000','浦发')"_s);
    }

    template <typename Form>
    Form* openWatching() {
        Form* form = open<Form>();
        watch(*form);
        return form;
    }
    static void watch(const QWidget& form) {
        form.findChild<StoreWatch*>()->setInterval(std::chrono::milliseconds(5));
    }
    bool comesTo(int rows) {
        return QTest::qWaitFor([&] { return grid().rows() == rows; });
    }
    void collect(const QString& item, int count, const QString& day = u"2026-11-24"_s) {
        runHeat(u"insert into xinwenshul(riqi,zhutiname,onecishu,allzhangfu) values('"_s + day +
                u" 10:00:00','"_s + item + u"',"_s + QString::number(count) + u",-9)"_s);
    }
    // Keys reach commands in the active window only.
    static void pressKey(GridView& view, Qt::Key key) {
        view.window()->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(view.window()));
        view.setFocus();
        QTest::keyClick(&view, key);
    }
    QString noteOf(int row) {
        return grid().data(grid().index(row - 1, 2), Qt::AccessibleDescriptionRole).toString();
    }
};

TEST_F(HeatRefreshTest, RowsComeInWhileMarkSelectionOrderAndScrollStay) {
    openWatching<Form25>();
    clickHeader(view(), 2);
    clickCell(view(), 10, 2);
    view().verticalScrollBar()->setValue(7);
    collect(u"题00"_s, 5);
    ASSERT_TRUE(comesTo(82));
    EXPECT_EQ(grid().textMatrix(1, 2), u"题00"_s) << "in the order that was chosen";
    EXPECT_EQ(grid().textMatrix(grid().markedRow(), 2), u"题10"_s);
    EXPECT_EQ(view().verticalScrollBar()->value(), 7);

    collect(u"题10"_s, 44, u"2026-11-23"_s);
    until([&] { return grid(u"MSHFlexGrid2"_s).rows() == 3; });
    EXPECT_EQ(noteOf(11), u"近30天 一日数量：采集 2 天，最少 10，最多 44，最近 10"_s);

    collect(u"题10"_s, 1, u"2026-11-25"_s);
    ASSERT_TRUE(comesTo(2)) << "a new day begins";
    runHeat(u"delete from xinwenshul where riqi>'2026-11-25'"_s);
    ASSERT_TRUE(comesTo(82));
    EXPECT_EQ(grid().textMatrix(grid().markedRow(), 2), u"题10"_s);
}

TEST_F(HeatRefreshTest, AHiddenWindowReadsNothingAndOneThatShowsAgainAtOnce) {
    auto* themes = openWatching<Form25>();
    const auto companies = [&] {
        return gridOf(*child<GridView>(form_, u"MSHFlexGrid1"_s)).rows();
    };
    openWatching<Form31>();
    themes->hide();
    collect(u"新题"_s, 1);
    runHeat(u"insert into gongsixinwen(riqi,dm,jc) values('2026-11-24','SH600001','邯钢')"_s);
    until([&] { return companies() == 3; });
    form_ = themes;
    EXPECT_EQ(grid().rows(), 81);
    themes->show();
    EXPECT_TRUE(comesTo(82));
}

TEST_F(HeatRefreshTest, WhatFailsIsToldOnceAndAWindowMayCloseInTheMiddle) {
    openWatching<Form25>();
    collect(u"新题"_s, 1);
    ASSERT_TRUE(comesTo(82));
    runHeat(u"alter table xinwenshul rename to gone"_s);
    until([&] { return failures_.texts.size() == 1; });
    runHeat(u"update canshu set guanzhudu=1"_s);
    runHeat(u"update canshu set guanzhudu=2"_s);
    runHeat(u"alter table gone rename to xinwenshul"_s);
    collect(u"再来"_s, 1);
    ASSERT_TRUE(comesTo(83));
    EXPECT_EQ(failures_.texts.size(), 1) << "and what was shown stayed";
    for (int turn = 0; turn < 5; ++turn) {
        open<Form25>()->close();
        deleteClosedWindows();
    }
    until([] { return QThreadPool::globalInstance()->activeThreadCount() == 0; });
}

TEST_F(HeatRefreshTest, TheHeatMapOpensByKeyShowsTheDayAndLeadsBack) {
    store_.addCode(u"SH600000"_s, u"浦发"_s, 10, 3);
    store_.run({u"insert into dzhzhuti(zhutiname,dm) values('题10','SH600000')"_s,
                u"update dmb set newhqtime='2026-11-24 15:00:00'"_s});
    auto* ranking = openWatching<Form25>();
    pressKey(view(), Qt::Key_F8);
    form_ = shownWindow<HeatMapWindow>();
    watch(*form_);
    const auto mapRows = [&] { return grid(u"map"_s).rows(); };
    until([&] { return mapRows() == 81; });
    EXPECT_EQ(rowText(grid(u"map"_s), 1), u"1|题80|80"_s);
    find<QTabWidget>(u"tabs"_s)->setCurrentIndex(1);
    QApplication::processEvents();  // lays out
    auto* plot = find<ScatterPlot>(u"plot"_s);
    QTest::keyClick(plot, Qt::Key_Right);
    EXPECT_EQ(plot->chosenText(), u"题10  一日数量 10  涨幅 3.00%"_s);
    auto* field = find<QComboBox>(u"field"_s);
    QTest::keyClick(field, Qt::Key_End);
    QTest::keyClick(field, Qt::Key_Home);
    QTest::keyClick(field, Qt::Key_Down);
    collect(u"新题"_s, 1);
    until([&] { return mapRows() == 82; });
    EXPECT_EQ(grid(u"map"_s).textMatrix(1, 2), u"0"_s) << "the growth of the day";
    QTest::keyClick(plot, Qt::Key_Right);
    QTest::keyClick(plot, Qt::Key_Return);
    form_ = ranking;
    EXPECT_EQ(globals_.dangqianzhuti, u"题10"_s);
    EXPECT_EQ(grid().textMatrix(grid().markedRow(), 2), u"题10"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid2"_s).rows(), 2);
}

}  // namespace guanchao
