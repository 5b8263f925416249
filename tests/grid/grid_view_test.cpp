// Which rows keys, mouse and fills choose, and what is painted of that.
#include <QScrollBar>
#include <QSignalSpy>
#include <algorithm>

#include "tests/grid/grid_view_fixture.h"

namespace guanchao {

TEST_F(GridViewTest, AHeaderSortsAndItsArrowTellsHow) {
    clickHeader(view_, 1);
    EXPECT_EQ(columnTexts(grid_, 1).mid(1), QStringList({u"乙"_s, u"甲"_s, u"丙"_s}))
        << "sorting isn't enabled";
    ResultGrid otherGrid;
    otherGrid.setCols(2);
    otherGrid.setRows(3);
    otherGrid.setTextMatrix(1, 1, u"1"_s);
    otherGrid.setTextMatrix(2, 1, u"2"_s);
    GridView other;
    other.setGrid(otherGrid);
    other.show();
    view_.setSortable({u"日期"_s});
    other.setSortable();
    other.shareSortOrder(view_);
    const struct {
        GridView& view;
        int col;
        QString arrow;
        QStringList names;
    } clicks[] = {{view_, 1, u"1+"_s, {u"丙"_s, u"甲"_s, u"乙"_s}},
                  {view_, 1, u"1-"_s, {u"乙"_s, u"甲"_s, u"丙"_s}},
                  {view_, 2, u"2+"_s, {u"乙"_s, u"甲"_s, u"丙"_s}},
                  {other, 1, u"1-"_s, {u"乙"_s, u"甲"_s, u"丙"_s}},
                  {view_, 0, u"0+"_s, {u"乙"_s, u"甲"_s, u"丙"_s}},
                  {view_, 2, u"2-"_s, {u"丙"_s, u"甲"_s, u"乙"_s}}};
    for (const auto& it : clicks) {
        clickHeader(it.view, it.col);
        EXPECT_EQ(arrow(it.view), it.arrow);
        EXPECT_EQ(columnTexts(grid_, 1).mid(1), it.names) << it.arrow.toStdString();
        EXPECT_EQ(columnTexts(grid_, 0), QStringList({QString(), u"1"_s, u"2"_s, u"3"_s}));
    }
    EXPECT_EQ(otherGrid.textMatrix(1, 1), u"2"_s) << "the order is the window's";
    fill({u"丁"_s});
    EXPECT_EQ(arrow(view_), QString()) << "its rows stand as they were found";
    EXPECT_EQ(arrow(other), u"1-"_s);
}

TEST_F(GridViewTest, KeysAndMouseChooseTheRowThatIsMarked) {
    view_.setRowMenu(menu_);
    menu_.addAction(u"删除"_s);
    const auto clickGround = [&] {
        QTest::mouseClick(view_.viewport(), Qt::RightButton, {}, {20, 250});
    };
    EXPECT_EQ(selectedRow(), 0);
    QSignalSpy clicks(&view_, &GridView::rowClicked);
    const std::tuple<const char*, std::function<void()>, std::vector<int>, int, bool> acts[] = {
        {"left button", [&] { clickCell(view_, 1, 2); }, {1}, 1, false},
        {"down", [&] { QTest::keyClick(&view_, Qt::Key_Down); }, {2}, 2, false},
        {"right", [&] { QTest::keyClick(&view_, Qt::Key_Right); }, {}, 2, false},
        {"end", [&] { QTest::keyClick(&view_, Qt::Key_End, Qt::ControlModifier); }, {3}, 3, false},
        {"down at the end", [&] { QTest::keyClick(&view_, Qt::Key_Down); }, {}, 3, false},
        {"menu key", [&] { pressMenuKey(); }, {3}, 3, true},
        {"right button", [&] { clickCell(view_, 2, 1, Qt::RightButton); }, {2}, 2, true},
        {"enter", [&] { QTest::keyClick(&view_, Qt::Key_Return); }, {2}, 2, false},
        {"header", [&] { clickHeader(view_, 1); }, {0}, 2, false},
        {"ground", clickGround, {0}, 2, false},
    };
    for (const auto& [name, act, told, row, opensMenu] : acts) {
        told_.clear();
        act();
        EXPECT_EQ(told_, told) << name;
        EXPECT_EQ(grid_.markedRow(), row) << name;
        EXPECT_EQ(selectedRow(), row) << name;
        EXPECT_EQ(closeMenu(), opensMenu) << name;
    }
    EXPECT_EQ(clicks.size(), 2) << "left button and Enter";
    view_.setRowMenu(menu_, GridView::MenuArea::rowsAndGround);
    clickGround();
    EXPECT_TRUE(closeMenu());
    QApplication::processEvents();
    QSignalSpy reached(&view_, &GridView::rowReached);
    QTest::keyClick(&view_, Qt::Key_Down);
    QTest::keyClick(&view_, Qt::Key_Down);
    QApplication::processEvents();
    ASSERT_EQ(reached.size(), 1) << "keys that follow each other at once are one way";
    EXPECT_EQ(reached.first().first().toInt(), 3);
}

TEST_F(GridViewTest, TheRowChosenLastIsTheMarkedOneOfThoseThatAreSelected) {
    fill({u"甲"_s, u"乙"_s, u"丙"_s, u"丁"_s, u"戊"_s});
    view_.setSortable();
    view_.setRowMenu(menu_);
    menu_.addAction(u"删除"_s);
    QSignalSpy clicks(&view_, &GridView::rowClicked);
    const auto click = [&](int row, Qt::KeyboardModifiers keys,
                           Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(view_.viewport(), button, keys, cellOf(view_, row, 1));
        closeMenu();
    };
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers keys) {
        QTest::keyClick(&view_, key, keys);
    };
    const auto all = [&] { press(Qt::Key_A, Qt::ControlModifier); };
    const auto up = [&](Qt::KeyboardModifiers keys) {
        return [&, keys] { press(Qt::Key_Up, keys); };
    };
    const auto sort = [&] {
        clickHeader(view_, 2);
        clickHeader(view_, 2);
    };
    const auto fillAnew = [this] { fill({u"甲"_s, u"丙"_s, u"丁"_s}); };
    const struct {
        const char* name;
        std::function<void()> act;
        QList<int> rows;
        int marked;
        bool isClick = false;
    } acts[] = {
        {"nothing yet, Ctrl+A", all, {1, 2, 3, 4, 5}, 1},
        {"a plain click", [&] { click(2, {}); }, {2}, 2, true},
        {"Shift and a click", [&] { click(4, Qt::ShiftModifier); }, {2, 3, 4}, 4, true},
        {"Ctrl and a click", [&] { click(1, Qt::ControlModifier); }, {1, 2, 3, 4}, 1, true},
        {"which takes a row out", [&] { click(3, Qt::ControlModifier); }, {1, 2, 4}, 1},
        {"the marked one too", [&] { click(1, Qt::ControlModifier); }, {2, 4}, 4},
        {"the menu of one of them", [&] { click(2, {}, Qt::RightButton); }, {2, 4}, 2},
        {"the menu of another row", [&] { click(5, {}, Qt::RightButton); }, {5}, 5},
        {"the last one out", [&] { click(5, Qt::ControlModifier); }, {5}, 5, true},
        {"an arrow", up({}), {4}, 4},
        {"Shift and an arrow", up(Qt::ShiftModifier), {3, 4}, 3},
        {"another row by the program", [&] { grid_.biaoji(5); }, {5}, 5},
        {"Shift goes on from there", up(Qt::ShiftModifier), {4, 5}, 4},
        {"Ctrl and an arrow", [&] { press(Qt::Key_Down, Qt::ControlModifier); }, {5}, 5},
        {"Ctrl+A", all, {1, 2, 3, 4, 5}, 5},
        {"a click on one of all", [&] { click(3, {}); }, {3}, 3, true},
        {"and its neighbour", [&] { click(4, Qt::ShiftModifier); }, {3, 4}, 4, true},
        {"sorted", sort, {2, 3}, 2},
        {"filled anew", fillAnew, {3}, 3},
    };
    for (const auto& it : acts) {
        clicks.clear();
        it.act();
        EXPECT_EQ(selectedRows(), it.rows) << it.name;
        EXPECT_EQ(grid_.markedRow(), it.marked) << it.name;
        EXPECT_EQ(view_.currentIndex().row() + 1, it.marked) << it.name;
        EXPECT_EQ(clicks.size(), it.isClick ? 1 : 0) << it.name;
    }
}

TEST_F(GridViewTest, AFillLeavesTheViewWhereItWas) {
    QStringList names;
    for (int at = 0; at < 100; ++at) {
        names << u"题"_s + QString::number(at);
    }
    fill(names);
    clickCell(view_, 4, 1);
    view_.verticalScrollBar()->setValue(50);
    std::ranges::reverse(names);
    fill(names);
    EXPECT_EQ(view_.verticalScrollBar()->value(), 50);
    EXPECT_EQ(selectedRow(), 97);
}

// What was painted since it was asked last.
class PaintedRegion : public QObject {
public:
    explicit PaintedRegion(QWidget& widget) { widget.installEventFilter(this); }

    QRegion take() {
        QApplication::processEvents();  // lays out
        QApplication::processEvents();
        return std::exchange(painted_, QRegion());
    }

private:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            painted_ += static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }

    QRegion painted_;
};

TEST_F(GridViewTest, ARefillPaintsWhatHasChangedAndKeepsTheSelection) {
    const auto refill = [this](const QList<int>& rows, double gainOfFirst) {
        const GridFill fill(grid_, GridFill::Rows::ofTheSameList);
        grid_.clear();
        grid_.setRows(static_cast<int>(rows.size()) + 1);
        grid_.setTextMatrix(0, 1, u"名称"_s);
        for (int row = 1; row < grid_.rows(); ++row) {
            grid_.setTextMatrix(row, 1, u"题"_s + QString::number(rows[row - 1]));
            grid_.setReal(row, 2, row == 1 ? gainOfFirst : 1.5);
        }
    };
    refill({1, 2, 3, 4}, 1);
    PaintedRegion painted(*view_.viewport());
    clickCell(view_, 2, 1);
    QTest::mouseClick(view_.viewport(), Qt::LeftButton, Qt::ControlModifier,
                      view_.visualRect(grid_.index(2, 1)).center());
    painted.take();
    refill({1, 2, 3, 4}, 1);
    EXPECT_TRUE(painted.take().isEmpty());
    refill({1, 2, 3, 4}, 2);
    EXPECT_EQ(painted.take(), QRegion(view_.visualRect(grid_.index(0, 2))));
    EXPECT_EQ(selectedRows(), (QList<int>{2, 3}));

    refill({3, 1, 4, 2}, 2);
    EXPECT_EQ(painted.take(), QRegion(view_.viewport()->rect()));
    EXPECT_EQ(selectedRows(), (QList<int>{1, 4})) << "they have moved with their items";
    EXPECT_EQ(markedName(), u"题3"_s);

    refill({3, 5, 4, 2, 6}, 2);
    EXPECT_EQ(selectedRows(), (QList<int>{1, 4})) << "though others have come and gone";
    refill({5, 4, 2}, 2);
    EXPECT_EQ(selectedRow(), 0) << "none without the marked one";
}

}  // namespace guanchao
