// The view of result grids under real keys and a real mouse.
#include "grid/grid_view.h"

#include <QAccessible>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QLabel>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QToolTip>
#include <vector>

#include "grid/row_menu.h"
#include "tests/support/fakes.h"
#include "tests/support/files.h"
#include "tests/support/grid_texts.h"
#include "tests/support/outcome_of.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_windows.h"

namespace guanchao {

class GridViewTest : public ::testing::Test {
protected:
    GridViewTest() {
        view_.setGrid(grid_);
        view_.resize(500, 300);
        fill({u"乙"_s, u"甲"_s, u"丙"_s});
        view_.show();
        view_.setFocus();
        QObject::connect(&view_, &GridView::rowChosen, [this](int row) { told_.push_back(row); });
    }

    void fill(const QStringList& names) {
        const GridFill fill(grid_);
        grid_.clear();
        grid_.setCols(4);
        grid_.setRows(static_cast<int>(names.size()) + 1);
        grid_.setTextMatrix(0, 1, u"名称"_s);
        grid_.setTextMatrix(0, 2, u"涨幅"_s);
        grid_.setTextMatrix(0, 3, u"日期"_s);
        for (int row = 1; row < grid_.rows(); ++row) {
            grid_.setInteger(row, 0, row);
            grid_.setTextMatrix(row, 1, names[row - 1]);
            grid_.setReal(row, 2, row * 1.5);
        }
    }

    // Draws the right edge of the column.
    void drawColumn(int col, int by) {
        auto* header = view_.horizontalHeader();
        const QPoint edge(header->sectionViewportPosition(col) + header->sectionSize(col) - 1,
                          header->height() / 2);
        QTest::mousePress(header->viewport(), Qt::LeftButton, {}, edge);
        QTest::mouseMove(header->viewport(), edge + QPoint(by, 0));
        QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, edge + QPoint(by, 0));
    }

    void pressMenuKey() {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
        QApplication::sendEvent(view_.viewport(), &event);
    }

    // The words of the menu that is open, ticked ones behind a +, those that can't be chosen in
    // brackets, with the key that it tells.
    static QString menuWords() {
        QStringList words;
        const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        for (const QAction* it : menu ? menu->actions() : QList<QAction*>()) {
            const QString text = it->isSeparator() ? u"-"_s : it->text();
            const QString ticked = it->isChecked() ? u"+"_s + text : text;
            const QString keys = it->shortcut().toString();
            const QString told = keys.isEmpty() ? ticked : ticked + u' ' + keys;
            if (it->isVisible()) {
                words << (it->isEnabled() ? told : u'(' + told + u')');
            }
        }
        return words.join(u'|');
    }

    // By a click on its entry.
    static void chooseInMenu(const QString& words) {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (QAction* it : menu->actions()) {
            if (it->text() == words) {
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(it).center());
                QApplication::processEvents();
                return;
            }
        }
        FAIL() << words.toStdString();
    }

    void openHeaderMenu() {
        QWidget* header = view_.horizontalHeader()->viewport();
        const QPoint place(5, 5);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, header->mapToGlobal(place));
        QApplication::sendEvent(header, &event);
    }

    QString shownColumns() const {
        QStringList shown;
        for (int col = 0; col < 4; ++col) {
            shown << (view_.isColumnHidden(col) ? QString() : QString::number(col));
        }
        return shown.join(QString());
    }

    static bool closeMenu() {
        QWidget* menu = QApplication::activePopupWidget();
        return menu && menu->close();
    }

    // The column of the arrow, and + where it points up, for an ascending order.
    static QString arrow(const GridView& view) {
        const QHeaderView& header = *view.horizontalHeader();
        return header.isSortIndicatorShown() && header.sortIndicatorSection() >= 0
                   ? QString::number(header.sortIndicatorSection()) +
                         (header.sortIndicatorOrder() == Qt::DescendingOrder ? u'+' : u'-')
                   : QString();
    }

    QList<int> selectedRows() const {
        QList<int> rows;
        for (const QModelIndex& it : view_.selectionModel()->selectedRows()) {
            rows << it.row() + 1;
        }
        std::sort(rows.begin(), rows.end());
        return rows;
    }
    // 0 unless it is one.
    int selectedRow() const { return selectedRows().size() == 1 ? selectedRows().first() : 0; }

    QString markedName() { return grid_.textMatrix(grid_.markedRow(), 1); }

    ResultGrid grid_;
    GridView view_;
    QMenu menu_;
    std::vector<int> told_;
};

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
    } clicks[] = {
        {view_, 1, u"1+"_s, {u"丙"_s, u"甲"_s, u"乙"_s}},
        {view_, 1, u"1-"_s, {u"乙"_s, u"甲"_s, u"丙"_s}},
        {view_, 2, u"2+"_s, {u"乙"_s, u"甲"_s, u"丙"_s}},
        {view_, 3, u"3+"_s, {u"乙"_s, u"甲"_s, u"丙"_s}},
        {view_, 3, u"3-"_s, {u"乙"_s, u"甲"_s, u"丙"_s}},
        {view_, 2, u"2+"_s, {u"乙"_s, u"甲"_s, u"丙"_s}},
        {other, 1, u"1-"_s, {u"乙"_s, u"甲"_s, u"丙"_s}},
        {view_, 0, u"0+"_s, {u"乙"_s, u"甲"_s, u"丙"_s}},
        {view_, 2, u"2-"_s, {u"丙"_s, u"甲"_s, u"乙"_s}},
    };
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
    const struct {
        const char* name;
        std::function<void()> act;
        std::vector<int> told;
        int row;
        bool opensMenu;
    } acts[] = {
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
    for (const auto& it : acts) {
        told_.clear();
        it.act();
        EXPECT_EQ(told_, it.told) << it.name;
        EXPECT_EQ(grid_.markedRow(), it.row) << it.name;
        EXPECT_EQ(selectedRow(), it.row) << it.name;
        EXPECT_EQ(closeMenu(), it.opensMenu) << it.name;
    }
    EXPECT_EQ(clicks.size(), 2) << "left button and Enter";
    QTest::mousePress(view_.viewport(), Qt::LeftButton, {}, cellOf(view_, 1, 1));
    QTest::mouseMove(view_.viewport(), cellOf(view_, 3, 1));
    QTest::mouseRelease(view_.viewport(), Qt::LeftButton, {}, cellOf(view_, 3, 1));
    EXPECT_EQ(clicks.size(), 2) << "drawn away from its cell";
    EXPECT_EQ(grid_.markedRow(), 1);
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
    const struct {
        const char* name;
        std::function<void()> act;
        QList<int> rows;
        int marked;
        bool isClick;
    } acts[] = {
        {"nothing yet, Ctrl+A", all, {1, 2, 3, 4, 5}, 1, false},
        {"a plain click", [&] { click(2, {}); }, {2}, 2, true},
        {"Shift and a click", [&] { click(4, Qt::ShiftModifier); }, {2, 3, 4}, 4, true},
        {"Ctrl and a click", [&] { click(1, Qt::ControlModifier); }, {1, 2, 3, 4}, 1, true},
        {"which takes a row out", [&] { click(3, Qt::ControlModifier); }, {1, 2, 4}, 1, false},
        {"the marked one too", [&] { click(1, Qt::ControlModifier); }, {2, 4}, 4, false},
        {"the menu of one of them", [&] { click(2, {}, Qt::RightButton); }, {2, 4}, 2, false},
        {"the menu of another row", [&] { click(5, {}, Qt::RightButton); }, {5}, 5, false},
        {"the last one out", [&] { click(5, Qt::ControlModifier); }, {5}, 5, true},
        {"an arrow", [&] { press(Qt::Key_Up, {}); }, {4}, 4, false},
        {"Shift and an arrow", [&] { press(Qt::Key_Up, Qt::ShiftModifier); }, {3, 4}, 3, false},
        {"Shift and home",
         [&] { press(Qt::Key_Home, Qt::ShiftModifier | Qt::ControlModifier); },
         {1, 2, 3, 4},
         1,
         false},
        {"another row by the program", [&] { grid_.biaoji(5); }, {5}, 5, false},
        {"Shift goes on from there",
         [&] { press(Qt::Key_Up, Qt::ShiftModifier); },
         {4, 5},
         4,
         false},
        {"Ctrl and an arrow", [&] { press(Qt::Key_Down, Qt::ControlModifier); }, {5}, 5, false},
        {"Ctrl+A", all, {1, 2, 3, 4, 5}, 5, false},
        {"a click on one of all", [&] { click(3, {}); }, {3}, 3, true},
        {"and its neighbour", [&] { click(4, Qt::ShiftModifier); }, {3, 4}, 4, true},
        {"sorted",
         [&] {
             clickHeader(view_, 2);
             clickHeader(view_, 2);
         },
         {2, 3},
         2,
         false},
        {"filled anew",
         [&] {
             fill({u"甲"_s, u"丙"_s, u"丁"_s});
         },
         {3},
         3,
         false},
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

TEST_F(GridViewTest, TheMarkStaysWithItsItemAndTheViewWhereItWas) {
    QStringList names;
    for (int at = 0; at < 100; ++at) {
        names << u"题"_s + QString::number(at);
    }
    fill(names);
    view_.setSortable();
    clickCell(view_, 4, 1);
    view_.verticalScrollBar()->setValue(50);
    std::reverse(names.begin(), names.end());
    fill(names);
    EXPECT_EQ(markedName(), u"题3"_s);
    EXPECT_EQ(selectedRow(), 97);
    EXPECT_EQ(view_.verticalScrollBar()->value(), 50);
    clickHeader(view_, 2);
    clickHeader(view_, 2);
    EXPECT_EQ(selectedRow(), 4);
    QTest::keyClick(&view_, Qt::Key_Down);
    EXPECT_EQ(markedName(), u"题4"_s) << "keys go on from the mark";
    fill({u"别的"_s});
    EXPECT_EQ(selectedRow(), 0);
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

    refill({3, 5, 4, 2}, 2);
    EXPECT_EQ(selectedRow(), 1) << "of another set of items the marked one";
}

TEST_F(GridViewTest, AColumnThatTheUserHasDrawnKeepsItsWidth) {
    const int ownWidth = view_.columnWidth(1);
    drawColumn(2, 40);
    const int drawn = view_.columnWidth(2);
    EXPECT_EQ(drawn, view_.pixels(ResultGrid::standardWidth) + 40);
    fill({u"甲"_s});
    EXPECT_EQ(view_.columnWidth(2), drawn);
    EXPECT_EQ(view_.columnWidth(1), ownWidth);
    grid_.setTextMatrix(0, 2, u"只数"_s);
    fill({u"甲"_s});
    EXPECT_EQ(view_.columnWidth(2), drawn) << "known by its header";
    drawColumn(3, -60);
    const int last = view_.columnWidth(3);
    fill({u"甲"_s, u"乙"_s});
    view_.resize(600, 300);
    EXPECT_EQ(view_.columnWidth(3), last) << "the last one too";
}

TEST_F(GridViewTest, TheHeaderOffersTheColumns) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view_));
    const auto choose = [this](const QString& words) {
        openHeaderMenu();
        chooseInMenu(words);
    };
    const int own = view_.columnWidth(1);
    drawColumn(1, 40);
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
    fill({u"甲"_s, u"乙"_s});
    EXPECT_EQ(shownColumns(), u"2"_s);
    choose(u"名称"_s);
    EXPECT_EQ(shownColumns(), u"12"_s);
    EXPECT_EQ(view_.columnWidth(1), own + 40) << "as it was drawn, not hidden";
    choose(u"恢复列宽"_s);
    EXPECT_EQ(view_.columnWidth(1), own);
    GridView next;
    next.setGrid(grid_);
    next.showKept(view_.kept());
    EXPECT_TRUE(next.isColumnHidden(3) && !next.isColumnHidden(1)) << "in the next run";
    ResultGrid other;
    other.setCols(2);
    other.setTextMatrix(0, 1, u"日期"_s);
    next.setGrid(other);
    EXPECT_FALSE(next.isColumnHidden(1)) << "of a table without others";
    choose(u"全部显示"_s);
    EXPECT_EQ(shownColumns(), u"0123"_s);
}

TEST_F(GridViewTest, TheSelectedRowsAreCopiedAsAllRowsAreExported) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view_));
    const auto copied = [this](Qt::KeyboardModifiers keys, int row) {
        QTest::mouseClick(view_.viewport(), Qt::LeftButton, keys, cellOf(view_, row, 2));
        QTest::keyClick(&view_, Qt::Key_C, Qt::ControlModifier);
        return QApplication::clipboard()->text();
    };
    openHeaderMenu();
    chooseInMenu(u"日期"_s);
    EXPECT_EQ(copied({}, 2), u"2\t甲\t3.00\n"_s);
    EXPECT_EQ(copied(Qt::ControlModifier, 1), u"\t名称\t涨幅\n1\t乙\t1.50\n2\t甲\t3.00\n"_s);
    pressMenuKey();
    EXPECT_EQ(menuWords(), u"复制 Ctrl+C|在表中查找 F3|选择列…"_s)
        << "nothing to write a file with";
    closeMenu();

    const QTemporaryDir folder;
    FakeDialogs dialogs;
    FakeFailures failures;
    view_.setAccessibleName(u"主题表"_s);
    view_.allowExport(dialogs, failures);
    QAction open(u"打开"_s), remove(u"删除"_s), removeAll(u"全删"_s), refresh(u"刷新"_s);
    fillRowMenu(menu_, {&open, &remove, &removeAll, &refresh}, {&remove, &removeAll});
    view_.setRowMenu(menu_);
    const auto exportTo = [&](const QString& path) {
        dialogs.picked = path;
        clickCell(view_, 1, 1, Qt::RightButton);
        chooseInMenu(u"导出表格…"_s);
        return dialogs.shown.last();
    };
    pressMenuKey();
    EXPECT_EQ(menuWords(),
              u"打开|-|删除|全删|-|刷新|-|复制 Ctrl+C|导出表格…|在表中查找 F3|选择列…"_s);
    closeMenu();
    EXPECT_TRUE(exportTo(QString()).endsWith(u"|主题表.csv|CSV 表格(*.csv)"_s)) << "none picked";
    const QString path = folder.filePath(u"a.csv"_s);
    EXPECT_EQ(exportTo(path), u"观潮台|已导出 3 行到："_s + path);
    EXPECT_EQ(contentOf(path),
              u"\uFEFF,名称,涨幅\r\n1,乙,1.50\r\n2,甲,3.00\r\n3,丙,4.50\r\n"_s.toUtf8());
    exportTo(folder.filePath(u"没有/a.csv"_s));
    ASSERT_EQ(failures.texts.size(), 1);
    EXPECT_TRUE(failures.texts[0].contains(u"没有这个文件夹"_s)) << failures.texts[0].toStdString();
}

TEST_F(GridViewTest, AListThatChangesWhileItIsExportedIsNotWritten) {
    const QTemporaryDir folder;
    FakeDialogs dialogs;
    FakeFailures failures;
    fill(QStringList(3000, u"甲"_s));
    view_.allowExport(dialogs, failures);
    dialogs.picked = folder.filePath(u"a.csv"_s);
    const auto begin = [&] {
        QMenu menu;
        view_.setRowMenu(menu);
        menu.actions()[2]->trigger();
    };
    begin();
    fill({u"乙"_s});
    until([&] { return dialogs.shown.size() == 2; });
    EXPECT_EQ(dialogs.shown[1], u"观潮台|导出时列表变了，文件没有写入。请再导出一次。"_s);
    EXPECT_FALSE(QFile::exists(dialogs.picked));
    fill(QStringList(3000, u"甲"_s));
    begin();
    until([&] { return dialogs.shown.size() == 4; });
    EXPECT_EQ(contentOf(dialogs.picked).count("\r\n"), 3001);
}

TEST_F(GridViewTest, ATextIsFoundInTheShownCells) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view_));
    QStringList names(40, u"甲"_s);
    names[4] = names[39] = u"Ab"_s;
    names[20] = u"ac"_s;
    fill(names);
    clickCell(view_, 1, 1);
    const auto* line = view_.findChild<QWidget*>(u"findLine"_s);
    auto* text = line->findChild<QLineEdit*>();
    const auto* answer = line->findChild<QLabel*>();
    const auto key = [](Qt::Key pressed, Qt::KeyboardModifiers keys = {}) {
        QTest::keyClick(QApplication::focusWidget(), pressed, keys);
    };
    const auto type = [](const char* letters) {
        QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(letters));
    };
    const QString end = u"已到结尾，从开头接着找"_s;
    const QString begin = u"已到开头，从结尾接着找"_s;
    const struct {
        const char* name;
        std::function<void()> act;
        bool isOpen;
        int row;
        QString answer;
    } acts[] = {
        {"F3", [&] { key(Qt::Key_F3); }, true, 1, {}},
        {"typed", [&] { type("a"); }, true, 5, {}},
        {"a longer word, there too", [&] { type("b"); }, true, 5, {}},
        {"F3 for the next one", [&] { key(Qt::Key_F3); }, true, 40, {}},
        {"round", [&] { key(Qt::Key_Return); }, true, 5, end},
        {"back", [&] { key(Qt::Key_F3, Qt::ShiftModifier); }, true, 40, begin},
        {"a word that none has", [&] { type("x"); }, true, 40, u"没有找到"_s},
        {"the word is shorter", [&] { key(Qt::Key_Backspace); }, true, 40, {}},
        {"Down is no key of the grid", [&] { key(Qt::Key_Down); }, true, 40, {}},
        {"from the grid",
         [&] {
             clickCell(view_, 30, 1);
             key(Qt::Key_F3);
         },
         true,
         40,
         {}},
        {"Esc in the grid", [&] { key(Qt::Key_Escape); }, false, 40, {}},
        {"slash", [&] { key(Qt::Key_Slash); }, true, 40, {}},
        {"typed over", [&] { type("AC"); }, true, 21, end},
        {"Esc in the line", [&] { key(Qt::Key_Escape); }, false, 21, end},
        {"Down is the grid's", [&] { key(Qt::Key_Down); }, false, 22, end},
    };
    for (const auto& it : acts) {
        it.act();
        EXPECT_EQ(line->isVisible(), it.isOpen) << it.name;
        EXPECT_EQ(selectedRow(), it.row) << it.name;
        EXPECT_EQ(answer->text(), it.answer) << it.name;
        if (it.isOpen) {
            const int edge = line->geometry().top() - view_.viewport()->y();
            EXPECT_LT(view_.visualRect(view_.currentIndex()).bottom(), edge) << it.name;
        }
    }
    EXPECT_TRUE(text->text() == u"AC"_s && view_.hasFocus());
}

TEST_F(GridViewTest, AmountsArePaintedShortAndStayWhole) {
    grid_.setTextMatrix(0, 2, u"成交额"_s);
    grid_.setReal(1, 2, 2341000000.5);
    grid_.setTextMatrix(1, 3, u"23.41亿"_s);
    grid_.setAlignment(1, 3, CellAlignment::right);
    grid_.setColWidths({});
    const QFontMetrics metrics(view_.font());
    EXPECT_LT(view_.columnWidth(2), metrics.horizontalAdvance(u"2341000000.50"_s))
        << "as wide as what is painted";
    view_.setColumnWidth(2, 100);
    view_.setColumnWidth(3, 100);
    const auto picture = [this](int col) {
        return view_.viewport()->grab(view_.visualRect(grid_.index(0, col))).toImage();
    };
    EXPECT_EQ(picture(2), picture(3));
    const QPoint place = cellOf(view_, 1, 2);
    QHelpEvent help(QEvent::ToolTip, place, view_.viewport()->mapToGlobal(place));
    QApplication::sendEvent(view_.viewport(), &help);
    EXPECT_EQ(QToolTip::text(), u"2341000000.50"_s);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&view_)->tableInterface()->cellAt(0, 2)->text(
                  QAccessible::Name),
              u"2341000000.50"_s);
}

TEST_F(GridViewTest, NumbersCodesAndMomentsAreNeverCutShort) {
    const QFontMetrics metrics(view_.font());
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

TEST_F(GridViewTest, RowsFollowTheSizeOfTheFont) {
    QList<int> heights;
    for (const QString& points : {u"9pt"_s, u"20pt"_s, u"9pt"_s}) {
        qApp->setStyleSheet(u"QTableView { font-size: "_s + points + u"; }"_s);
        QApplication::processEvents();
        heights << view_.rowHeight(0);
    }
    EXPECT_GT(heights[1], heights[0]);
    EXPECT_EQ(heights[2], heights[0]);
    qApp->setStyleSheet({});
}

TEST_F(GridViewTest, TheLastColumnGrowsOnlyWhereItsTextsNeedIt) {
    const int own = view_.pixels(ResultGrid::standardWidth);
    EXPECT_EQ(view_.columnWidth(3), own) << "bare ground stays bare";
    grid_.setTextMatrix(2, 3, u"一行比这一列长一些的文字"_s);
    grid_.setColWidths({});
    EXPECT_GT(view_.columnWidth(3), own);
    EXPECT_LT(view_.horizontalHeader()->length(), view_.viewport()->width());
    grid_.setTextMatrix(2, 3, QString(200, u'文'));
    grid_.setColWidths({});
    EXPECT_EQ(view_.horizontalHeader()->length(), view_.viewport()->width());
}

}  // namespace guanchao
