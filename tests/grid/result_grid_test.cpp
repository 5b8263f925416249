#include "grid/result_grid.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "grid/sorting.h"
#include "grid/tianchongbiao.h"
#include "tests/support/grid_texts.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

static void setColumn(ResultGrid& grid, int col, const QStringList& texts) {
    grid.setCols(std::max(grid.cols(), col + 1));
    grid.setRows(static_cast<int>(texts.size()));
    for (int row = 0; row < grid.rows(); ++row) {
        grid.setTextMatrix(row, col, texts[row]);
    }
}

TEST(ResultGrid, CellsStayWhereTheTableIsResized) {
    ResultGrid grid;
    const QAbstractItemModelTester tester(&grid,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    setColumn(grid, 1, {u"h"_s, u"b"_s, u"a"_s, u"c"_s});
    grid.setCol(1);
    grid.sortRows(SortCode::genericAscending);
    grid.setCols(4);
    EXPECT_EQ(columnTexts(grid, 1), QStringList({u"h"_s, u"a"_s, u"b"_s, u"c"_s}));
    grid.setRows(2);
    grid.setCols(2);
    EXPECT_EQ(columnTexts(grid, 1), QStringList({u"h"_s, u"a"_s}));
    EXPECT_THROW(grid.textMatrix(2, 0), std::out_of_range);
    EXPECT_THROW(grid.setRow(2), std::out_of_range);
    EXPECT_THROW(grid.setRows(0), std::out_of_range);
    grid.clear();
    EXPECT_EQ(grid.rows(), 2);
    EXPECT_EQ(columnTexts(grid, 1), QStringList({QString(), QString()}));
}

TEST(ResultGrid, RedrawOffShowsEverythingAtOnceInTheEnd) {
    ResultGrid grid;
    QSignalSpy resets(&grid, &QAbstractItemModel::modelReset);
    grid.setRedraw(false);
    setColumn(grid, 1, {u"h"_s, u"1"_s, u"2"_s});
    EXPECT_EQ(resets.count(), 0);
    EXPECT_EQ(grid.rowCount(), 0);
    grid.setRedraw(true);
    EXPECT_EQ(resets.count(), 1);
    EXPECT_EQ(grid.rowCount(), 2);
    EXPECT_EQ(grid.data(grid.index(1, 1), Qt::DisplayRole).toString(), u"2"_s);
    grid.setRedraw(false);
    grid.setRedraw(true);
    EXPECT_EQ(resets.count(), 1) << "nothing had changed";
}

TEST(ResultGrid, MarkingSelectsTheWholeRowUntilAnotherCellIsCurrent) {
    ResultGrid grid;
    setColumn(grid, 3, {u"h"_s, u"1"_s, u"2"_s});
    EXPECT_EQ(grid.markedRow(), 0);
    biaoji(grid, 2);
    EXPECT_EQ(grid.row(), 2);
    EXPECT_EQ(grid.rowSel(), 2);
    EXPECT_EQ(grid.colSel(), 3);
    EXPECT_EQ(grid.markedRow(), 2);
    grid.setCol(1);
    EXPECT_EQ(grid.markedRow(), 0);
}

TEST(Sorting, GenericCodesPutNumbersBeforeTextsAndAreStable) {
    const std::vector<QStringView> keys = {u"10",   u"9.5", u"中", u"-1",
                                           u"9.50", u"",    u"安", u"1e1"};
    EXPECT_EQ(sortedOrder(keys, SortCode::genericAscending),
              (std::vector<int>{3, 1, 4, 0, 7, 5, 6, 2}));
    EXPECT_EQ(sortedOrder(keys, SortCode::genericDescending),
              (std::vector<int>{2, 6, 5, 0, 7, 1, 4, 3}));
    const std::vector<QStringView> texts = {u"b", u"10", u"A", u"9", u"a"};
    EXPECT_EQ(sortedOrder(texts, SortCode::textAscending), (std::vector<int>{1, 3, 2, 4, 0}));
    EXPECT_EQ(sortedOrder(texts, SortCode::textDescending), (std::vector<int>{0, 2, 4, 3, 1}));
}

TEST(Sorting, AHeaderClickFlipsTheLastCodeOfItsKind) {
    ResultGrid grid;
    setColumn(grid, 0, {u"序号"_s, u"1"_s, u"2"_s, u"3"_s});
    setColumn(grid, 1, {u"涨幅"_s, u"2.00"_s, u"-1.00"_s, u"10.00"_s});
    setColumn(grid, 2, {u"添加时间"_s, u"2016-01-03"_s, u"2016-01-01"_s, u"2016-01-02"_s});
    SortCode last = SortCode::none;
    const struct {
        int col;
        SortCode code;
        QStringList gains;
    } clicks[] = {
        {1, SortCode::genericAscending, {u"-1.00"_s, u"2.00"_s, u"10.00"_s}},
        {1, SortCode::genericDescending, {u"10.00"_s, u"2.00"_s, u"-1.00"_s}},
        {2, SortCode::textAscending, {u"-1.00"_s, u"10.00"_s, u"2.00"_s}},
        {2, SortCode::textDescending, {u"2.00"_s, u"10.00"_s, u"-1.00"_s}},
        {0, SortCode::genericAscending, {u"2.00"_s, u"10.00"_s, u"-1.00"_s}},
        // Another column of the same kind flips as well.
        {1, SortCode::genericDescending, {u"10.00"_s, u"2.00"_s, u"-1.00"_s}},
    };
    for (const auto& it : clicks) {
        sortByHeader(grid, it.col, {u"时间"_s}, last);
        EXPECT_EQ(last, it.code);
        EXPECT_EQ(columnTexts(grid, 1).sliced(1), it.gains);
        EXPECT_EQ(columnTexts(grid, 0), QStringList({u"序号"_s, u"1"_s, u"2"_s, u"3"_s}));
    }
    EXPECT_THROW(sortByHeader(grid, 7, {u"时间"_s}, last), std::out_of_range);
}

TEST(Tianchongbiao, PoursTypesAsTheStoreGaveThem) {
    TestStores store;
    Connection connection = store.stores.main.open();
    ResultGrid grid;
    setColumn(grid, 3, {u"h"_s, u"old"_s, u"old"_s});
    Recordset rows(
        connection,
        u"select 10 as 收盘,10.5 as 涨幅,null as 名称 union all select 2.345,'7.10','x'"_s);
    tianchongbiao(rows, grid, 1);
    EXPECT_EQ(columnTexts(grid, 0), QStringList({u"序号"_s, u"1"_s, u"2"_s}));
    EXPECT_EQ(columnTexts(grid, 1), QStringList({u"收盘"_s, u"10"_s, u"2.35"_s}));
    EXPECT_EQ(columnTexts(grid, 2), QStringList({u"涨幅"_s, u"10.50"_s, u"7.10"_s}));
    EXPECT_EQ(columnTexts(grid, 3), QStringList({u"名称"_s, u"old"_s, u"x"_s}));
    EXPECT_TRUE(rows.atEnd());
    EXPECT_EQ(grid.row(), 2);
    EXPECT_EQ(grid.col(), 3);
    grid.setRow(1);
    grid.setCol(2);
    EXPECT_EQ(grid.cellAlignment(), CellAlignment::right);
    grid.setRow(0);
    EXPECT_EQ(grid.cellAlignment(), CellAlignment::centre);

    Recordset none(connection, u"select dm as 代码 from dmb"_s);
    tianchongbiao(none, grid, 1);
    EXPECT_EQ(grid.rows(), 1);
    EXPECT_EQ(columnTexts(grid, 1), QStringList{u"代码"_s});
}

}  // namespace guanchao
