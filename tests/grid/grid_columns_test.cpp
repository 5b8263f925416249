// The columns of a view of a grid: which are shown, how wide they are, and what their cells paint.
#include <QAccessible>
#include <QHelpEvent>
#include <QToolTip>

#include "tests/grid/grid_view_fixture.h"

namespace guanchao {

TEST_F(GridViewTest, TheHeaderOffersTheColumns) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view_));
    const auto choose = [this](const QString& words) {
        openHeaderMenu();
        chooseInMenu(words);
    };
    const int own = view_.columnWidth(1);
    drawColumn(1, 40);
    EXPECT_EQ(view_.columnWidth(1), own + 40);
    openHeaderMenu();
    EXPECT_EQ(menuWords(), u"+第 1 列|+名称|+涨幅|+日期|-|(全部显示)|恢复列宽"_s);
    closeMenu();
    clickCell(view_, 2, 1);
    for (const QString& it : {u"名称"_s, u"第 1 列"_s, u"日期"_s}) {
        choose(it);
    }
    EXPECT_EQ(shownColumns(), u"2"_s);
    openHeaderMenu();
    EXPECT_EQ(menuWords(), u"第 1 列|名称|(+涨幅)|日期|-|全部显示|恢复列宽"_s) << "one stays";
    closeMenu();
    QTest::keyClick(&view_, Qt::Key_Down);
    EXPECT_EQ(selectedRow(), 3);
    grid_.setTextMatrix(0, 1, u"只数"_s);
    fill({u"甲"_s, u"乙"_s});
    EXPECT_EQ(shownColumns(), u"2"_s) << "known by its header";
    choose(u"名称"_s);
    EXPECT_EQ(shownColumns(), u"12"_s);
    EXPECT_EQ(view_.columnWidth(1), own + 40) << "as it was drawn, not hidden";
    choose(u"恢复列宽"_s);
    EXPECT_EQ(view_.columnWidth(1), own);
    GridView next;
    next.setGrid(grid_);
    next.showKept(view_.kept());
    EXPECT_TRUE(next.isColumnHidden(3) && !next.isColumnHidden(1)) << "in the next run";
    choose(u"全部显示"_s);
    EXPECT_EQ(shownColumns(), u"0123"_s);
}

TEST_F(GridViewTest, AmountsArePaintedShortAndNothingElseIsCutButNames) {
    grid_.setTextMatrix(0, 2, u"成交额"_s);
    grid_.setReal(1, 2, 2341000000.5);
    grid_.setColWidths({});
    const QFontMetrics metrics(view_.font());
    EXPECT_LT(view_.columnWidth(2), metrics.horizontalAdvance(u"2341000000.50"_s))
        << "as wide as what is painted";
    const QPoint place = cellOf(view_, 1, 2);
    QHelpEvent help(QEvent::ToolTip, place, view_.viewport()->mapToGlobal(place));
    QApplication::sendEvent(view_.viewport(), &help);
    EXPECT_EQ(QToolTip::text(), u"2341000000.50"_s);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&view_)->tableInterface()->cellAt(0, 2)->text(
                  QAccessible::Name),
              u"2341000000.50"_s);
    fill({u"甲"_s, u"乙"_s, u"丙"_s});

    const auto shows = [&](const QString& text) {
        return view_.columnWidth(2) > metrics.horizontalAdvance(text);
    };
    grid_.setTextMatrix(2, 2, u"2026-11-24 10:00:00"_s);
    grid_.setColWidths({});
    EXPECT_TRUE(shows(u"2026-11-24 10:00:00"_s));
    fill({u"甲"_s, u"一个很长很长很长很长很长的名称"_s});
    EXPECT_FALSE(shows(u"-123456789012.50"_s));
    grid_.setReal(1, 2, -123456789012.5);
    grid_.setInteger(2, 2, 99);
    grid_.setColWidths({});
    EXPECT_TRUE(shows(u"-123456789012.50"_s));
    EXPECT_LT(view_.columnWidth(1), metrics.horizontalAdvance(grid_.textMatrix(2, 1)));
}

}  // namespace guanchao
