#include "grid/result_grid.h"

#include <QAbstractItemModelTester>
#include <cmath>

#include "base/contrast.h"
#include "base/values.h"
#include "grid/amounts.h"
#include "grid/cell_search.h"
#include "grid/heat_colour.h"
#include "grid/sorting.h"
#include "grid/stock_rows.h"
#include "grid/table_text.h"
#include "grid/tianchongbiao.h"
#include "tests/support/store_test.h"

namespace guanchao {

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
    grid.orderRows(sortedRows(grid, 1, SortCode::genericAscending));
    grid.setCols(4);
    EXPECT_EQ(columnTexts(grid, 1), QStringList({u"h"_s, u"a"_s, u"b"_s, u"c"_s}));
    grid.setRows(2);
    grid.setCols(2);
    EXPECT_EQ(columnTexts(grid, 1), QStringList({u"h"_s, u"a"_s}));
    EXPECT_THROW(grid.textMatrix(2, 0), std::out_of_range);
    EXPECT_THROW(grid.setRows(0), std::out_of_range);
    grid.clear();
    EXPECT_EQ(rowTexts(grid), QStringList({u"|"_s, u"|"_s}));
}

TEST(HeatColour, GrowsWithTheNumberToItsFullAndItsWordsCanBeReadOnIt) {
    const auto red = [](double value) { return heatColour(value, 5) >> 16; };
    const auto green = [](double value) { return heatColour(value, 5) >> 8 & 0xFF; };
    for (int tenth = 0; tenth <= 50; ++tenth) {
        const double value = tenth / 10.0;
        EXPECT_LE(red(value), red(value + 0.1)) << value;
        EXPECT_LE(green(-value), green(-value - 0.1)) << value;
        EXPECT_GE(contrast(heatWords, heatColour(value, 5)), 4.5) << value;
        EXPECT_GE(contrast(heatWords, heatColour(-value, 5)), 4.5) << value;
    }
    EXPECT_LT(red(0), red(5));
    EXPECT_EQ(heatColour(5, 5), heatColour(40, 5));
    EXPECT_EQ(heatColour(std::nan(""), 5), heatColour(0, 5));
    EXPECT_NE(heatColour(-1, 5), heatColour(1, 5));
}

// What a cell holds is what it shows, in its text, its sign and its place in a sort.
TEST(ResultGrid, ANumberReadsAsItIsShown) {
    ResultGrid grid;
    grid.setCols(3);
    const double halves[] = {0,      -0.0,    -0.004, -0.005,     0.005,        2.345,
                             -1.995, 1e7 / 3, 123e15, 1234567.89, std::nan(""), -99999999.995};
    for (const double value : halves) {
        grid.setReal(0, 1, value);
        EXPECT_EQ(grid.textMatrix(0, 1), twoDecimals(value)) << value;
        EXPECT_EQ(grid.number(0, 1), numericPrefix(twoDecimals(value))) << value;
        EXPECT_EQ(grid.textLength(0, 1), twoDecimals(value).size()) << value;
        EXPECT_EQ(signColour(grid, 0, 1), signColour(twoDecimals(value))) << value;
    }
    for (const qint64 value : {0LL, -7LL, (1LL << 53) + 1, -(1LL << 62)}) {
        grid.setInteger(0, 1, value);
        EXPECT_EQ(grid.textMatrix(0, 1), QString::number(value));
        EXPECT_EQ(signColour(grid, 0, 1), value < 0 ? fallColour : riseColour);
    }
    grid.setTextMatrix(0, 1, u"-5%"_s);
    EXPECT_EQ(grid.number(0, 1), std::nullopt);
    EXPECT_EQ(signColour(grid, 0, 1), fallColour) << "the number that the text begins with";
}

TEST(ResultGrid, TheMarkFollowsTheItemThatAllKeyColumnsTell) {
    ResultGrid grid;
    grid.setKeyColumns({1, 2});
    setColumn(grid, 1, {u"名称"_s, u"甲"_s, u"乙"_s, u"乙"_s});
    setColumn(grid, 2, {u"日"_s, u"1"_s, u"1"_s, u"2"_s});
    grid.biaoji(3);
    EXPECT_EQ(QList<int>({grid.row(), grid.rowSel(), grid.col(), grid.colSel()}),
              QList<int>({3, 3, 0, 2}));
    grid.orderRows({2, 3, 1});
    EXPECT_EQ(grid.markedRow(), 2);
    EXPECT_EQ(rowTexts(grid), QStringList({u"|名称|日"_s, u"1|乙|1"_s, u"2|乙|2"_s, u"3|甲|1"_s}));
    grid.setRows(5);
    EXPECT_EQ(grid.markedRow(), 2);
    grid.setCol(1);
    EXPECT_EQ(grid.markedRow(), 0) << "a cell is no row";
}

TEST(Sorting, NumbersStandBeforeTextsAndEqualsKeepTheirOrder) {
    ResultGrid grid;
    setColumn(grid, 0,
              {u"h"_s, u"10"_s, u"9.5"_s, u"中"_s, u"-1"_s, u""_s, u""_s, u"安"_s, u"1e1"_s});
    grid.setReal(5, 0, 9.501);
    EXPECT_EQ(sortedRows(grid, 0, SortCode::genericAscending),
              (std::vector<int>{4, 2, 5, 1, 8, 6, 7, 3}));
    EXPECT_EQ(sortedRows(grid, 0, SortCode::genericDescending),
              (std::vector<int>{3, 7, 6, 1, 8, 2, 5, 4}));
    setColumn(grid, 0, {u"h"_s, u"b"_s, u""_s, u"A"_s, u"9"_s, u"a"_s});
    grid.setInteger(2, 0, 10);
    EXPECT_EQ(sortedRows(grid, 0, SortCode::textAscending), (std::vector<int>{2, 4, 3, 5, 1}));
    EXPECT_EQ(sortedRows(grid, 0, SortCode::textDescending), (std::vector<int>{1, 3, 5, 4, 2}));
}

TEST(GridTexts, OtherProgramsTakeWholeValuesAndNoFormulas) {
    ResultGrid grid;
    setColumn(grid, 1, {u"名称"_s, u"一\t二\r\n三\n"_s, u"a,\"b\""_s, u"x\ny"_s});
    setColumn(grid, 2, {u"=1+1"_s, u"=1+1"_s, u"-5%"_s, u"@b"_s});
    setColumn(grid, 3, {u"成交量"_s, u"+1.5"_s, u"-2"_s, u"+"_s});
    grid.setTextMatrix(3, 2, QString(300, u'长'));
    grid.setReal(1, 0, 2341000000.5);
    EXPECT_EQ(copiedText(grid, {2}, {3, 1}), u"-2\ta,\"b\"\n"_s);
    EXPECT_EQ(
        copiedText(grid, {1, 3}, {0, 1, 2}),
        u"\t名称\t=1+1\n2341000000.50\t一 二 三 \t=1+1\n\tx y\t"_s + QString(300, u'长') + u'\n');
    grid.setTextMatrix(3, 2, u"@b"_s);
    QStringList lines;
    for (int row = 0; row < grid.rows(); ++row) {
        lines << csvLine(grid, row, {0, 3, 2, 1});
    }
    EXPECT_EQ(lines, QStringList({u",成交量,'=1+1,名称\r\n"_s,
                                  u"2341000000.50,+1.5,'=1+1,\"一\t二\r\n三\n\"\r\n"_s,
                                  u",-2,'-5%,\"a,\"\"b\"\"\"\r\n"_s, u",'+,'@b,\"x\ny\"\r\n"_s}));
}

TEST(CellSearch, GoesRoundTheShownCellsFromTheOneBehind) {
    ResultGrid grid;
    setColumn(grid, 1, {u"甲"_s, u"甲A"_s, u"乙"_s, u"a丙"_s});
    setColumn(grid, 2, {u"涨幅"_s, u"1"_s, u"甲a"_s, QString()});
    grid.setReal(3, 2, -12.5);
    const auto forward = SearchWay::forward;
    const auto backward = SearchWay::backward;
    const std::tuple<QString, QList<int>, CellPlace, SearchWay, CellPlace> cases[] = {
        {u"a"_s, {1, 2}, {0, 0}, forward, {2, 2}},  // behind the first cell
        {u"a"_s, {1, 2}, {1, 1}, forward, {2, 2}},  {u"A"_s, {1, 2}, {2, 2}, forward, {3, 1}},
        {u"A"_s, {1, 2}, {3, 1}, forward, {1, 1}},  {u"A"_s, {1, 2}, {1, 1}, backward, {3, 1}},
        {u"a"_s, {1, 2}, {3, 1}, backward, {2, 2}}, {u"a"_s, {1}, {1, 1}, forward, {3, 1}},
        {u"乙"_s, {1, 2}, {2, 1}, forward, {2, 1}}, {u"-12.50"_s, {1, 2}, {1, 1}, forward, {3, 2}},
        {u"12.50"_s, {1}, {1, 1}, forward, {}},     {u"涨幅"_s, {1, 2}, {1, 1}, forward, {}},
        {QString(), {1, 2}, {1, 1}, forward, {}},   {u"a"_s, {}, {1, 1}, forward, {}},
    };
    for (const auto& [text, cols, from, way, found] : cases) {
        EXPECT_EQ(findCell(grid, cols, text, from, way).value_or(CellPlace()), found)
            << text.toStdString() << " from " << from.row << ' ' << from.col;
    }
    grid.setRows(1);
    EXPECT_EQ(findCell(grid, {1, 2}, u"a"_s, {}, forward), std::nullopt);
}

TEST(Amounts, FourDigitsAndTheirUnit) {
    const std::pair<double, QString> cases[] = {{9999.99, {}},
                                                {-9999, {}},
                                                {10000, u"1.000万"_s},
                                                {99994, u"9.999万"_s},
                                                {99996, u"10.00万"_s},
                                                {9999499, u"999.9万"_s},
                                                {99994999, u"9999万"_s},
                                                {99995000, u"1.000亿"_s},
                                                {-2341000000.5, u"-23.41亿"_s},
                                                {1234567890123, u"12346亿"_s}};
    for (const auto& [number, text] : cases) {
        EXPECT_EQ(shortAmount(number).value_or(QString()), text) << number;
    }
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
    EXPECT_EQ(rowTexts(grid),
              QStringList({u"序号|收盘|涨幅|名称"_s, u"1|10|10.50|old"_s, u"2|2.35|7.10|x"_s}));
    EXPECT_TRUE(rows.atEnd());
    Recordset none(connection, u"select dm as 代码 from dmb"_s);
    tianchongbiao(none, grid, 1);
    EXPECT_EQ(rowTexts(grid), QStringList{u"序号|代码"_s});
}

TEST(StockRowsTest, TheFirstColumnWithACodeTellsTheStockOfEachRow) {
    const std::pair<QString, QString> codes[] = {{u"SH600000"_s, u"SH600000"_s},
                                                 {u"sz300750"_s, u"SZ300750"_s},
                                                 {u"SH600519贵州茅台"_s, u"SH600519"_s},
                                                 {u"SH60000A"_s, {}},
                                                 {u"600000"_s, {}},
                                                 {u"SZ200011"_s, {}},
                                                 {u"银行"_s, {}}};
    for (const auto& [text, dm] : codes) {
        EXPECT_EQ(codeIn(text), dm) << text.toStdString();
    }
    ResultGrid grid;
    EXPECT_FALSE(tellsStocks(grid));
    grid.setCols(5);
    grid.setRows(4);
    for (const int row : {1, 3}) {
        grid.setTextMatrix(row, 1, u"银行"_s);
        grid.setTextMatrix(row, 2, u"SH60000%1"_s.arg(row));
        grid.setTextMatrix(row, 3, u"SH601398"_s);
    }
    grid.setTextMatrix(0, 4, u"日期"_s);
    grid.setTextMatrix(3, 4, u"2016-04-05 00:00:00"_s);
    const QStringList told = textsOf(stocksOf(grid), [](const StockOfRow& it) -> QString {
        return QString::number(it.row) + it.dm + it.day.toString(Qt::ISODate);
    });
    EXPECT_TRUE(tellsStocks(grid));
    EXPECT_EQ(told, QStringList({u"1SH600001"_s, u"3SH6000032016-04-05"_s}))
        << "a row without a code has none";
}

}  // namespace guanchao
