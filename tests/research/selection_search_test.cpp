#include "research/selection_search.h"

#include <gtest/gtest.h>

#include "store/recordset.h"
#include "store/store_error.h"
#include "tests/support/grid_texts.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

// A store with two themes on two days and three stocks of them.
class SelectionSearchTest : public ::testing::Test {
protected:
    void addTheme(const QString& riqi, const QString& ticai) {
        store_.run({u"insert into xuanticai values('"_s + riqi + u"','"_s + ticai +
                    u"',3.5,5,1,8,0.25,10.02)"_s});
    }
    // The prices from fuquansp to hou10sp and the volumes, in the order of the columns.
    void addStock(const QString& riqi, const QString& dm, const QString& ticai,
                  const QString& figures) {
        store_.run({u"insert into xuanticaigu values('"_s + riqi + u"','"_s + dm + u"','某股','"_s +
                    ticai + u"',"_s + figures + u")"_s});
    }
    void addSome() {
        addTheme(u"2016-04-01 00:00:00"_s, u"白酒"_s);
        addTheme(u"2016-04-05 00:00:00"_s, u"锂电池"_s);
        addStock(u"2016-04-01 00:00:00"_s, u"SH600519"_s, u"白酒"_s,
                 u"11,11,11,10,11,22,0,10,300,200,12,12.6,13,11.4,13.2,0,150"_s);
        addStock(u"2016-04-05 00:00:00"_s, u"SZ002460"_s, u"锂电池"_s,
                 u"20,20,20,20,20,20,20,20,100,200,20,18,20,20,21,22,50"_s);
        // Of another day than its theme, and of a theme that was not chosen.
        addStock(u"2016-04-06 00:00:00"_s, u"SZ002460"_s, u"锂电池"_s,
                 u"1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1"_s);
        addStock(u"2016-04-05 00:00:00"_s, u"SH600000"_s, u"银行"_s,
                 u"1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1"_s);
    }
    QString row(int row) const {
        QStringList cells;
        for (int col = 0; col < grid_.cols(); ++col) {
            cells << grid_.textMatrix(row, col);
        }
        return cells.join(u'|');
    }
    Colour ground(int row, int col) const {
        return grid_.data(grid_.index(row - 1, col), ResultGrid::BackColourRole).toUInt();
    }

    TestStores store_;
    Globals globals_;
    ResultGrid grid_;
    SelectionSearch search_{store_.stores, globals_, grid_};
};

TEST_F(SelectionSearchTest, TheStatementIsBuiltWordByWord) {
    const QString fixed =
        u"select xuanticaigu.dm as 代码,jc as 简称,date(xuanticai.riqi) as 日期,xuanticai.ticai as "
        u"题材,ticaizhang as 题材涨, dapanzhang as 大盘涨,zonggeshu as 总个数,zhangtinshu as "
        u"涨停数,yizishu as 一字数,round((cast(fuquansp as Double)/cast(qian1sp as "
        u"Double)-1)*100,2) as 股涨幅,cast(chengjl as Double)/cast(chengjl10ri as Double) as "
        u"量比,round((cast(hou1kp as Double)/cast(fuquansp as Double)-1)*100,2) as "
        u"开盘涨,round((cast(fuquansp as Double)/cast(qian3sp as Double)-1)*100,2) as "
        u"前3涨,round((cast(fuquansp as Double)/cast(qian10sp as Double)-1)*100,2) as "
        u"前10涨,round((cast(fuquansp as Double)/cast(qian30sp as Double)-1)*100,2) as "
        u"前30涨,round((cast(hou2kp as Double)/cast(hou1kp as Double)-1)*100,2) as "
        u"后1涨,round((cast(hou2sp as Double)/cast(hou1kp as Double)-1)*100,2) as "
        u"后2涨,round((cast(hou5sp as Double)/cast(hou1kp as Double)-1)*100,2) as "
        u"后5涨,round((cast(hou10sp as Double)/cast(hou1kp as Double)-1)*100,2) as "
        u"后10涨,cast(hou1liang as Double)/cast(chengjl10ri as Double) as "
        u"后1量比,round((cast(hou2kp as Double)/cast(hou1sp as Double)-1)*100,2) as 后2开盘 from "
        u"xuanticai,xuanticaigu where xuanticai.ticai=xuanticaigu.ticai and "
        u"date(xuanticai.riqi)=date(xuanticaigu.riqi) "_s;
    const struct {
        void (*type)(SelectionQuery&);
        QString condition;
    } cases[] = {
        {[](SelectionQuery&) {}, QString()},
        {[](SelectionQuery& it) { it.condition = u"  AND 量比>2 and\r\n YIZISHU>1\r\n "_s; },
         u"and 量比>2 and\r\n yizishu>1\r\n"_s},
        {[](SelectionQuery& it) { it.byTheme = true; }, u" and xuanticai.ticai='Led 照明' "_s},
        {[](SelectionQuery& it) { it.byCode = true; }, u" and dm='SH600519' "_s},
        {[](SelectionQuery& it) { it.byDates = true; },
         u" and date(xuanticai.riqi)>='2016-12-24'  and date(xuanticai.riqi)<='2017-01-24' "_s},
        {[](SelectionQuery& it) {
             it.condition = u" and A>1"_s;
             it.byTheme = it.byCode = it.byDates = it.mergeDates = true;
         },
         u"and a>1 and xuanticai.ticai='Led 照明'  and dm='SH600519'  and"
         u" date(xuanticai.riqi)>='2016-12-24'  and date(xuanticai.riqi)<='2017-01-24' "_s},
    };
    for (const auto& it : cases) {
        SelectionQuery query;
        query.theme = u" Led 照明 "_s;
        query.code = u" sh600519 "_s;
        query.first = firstDate(QDate(2016, 12, 24));
        query.last = lastDate(QDate(2016, 12, 24));
        EXPECT_EQ(query.last.month, u"13"_s);
        it.type(query);
        EXPECT_EQ(
            query.statement(),
            fixed + it.condition +
                u"  order by date(xuanticai.riqi) desc,xuanticai.ticai desc,xuanticai.rowid desc,"
                u"xuanticaigu.rowid"_s);
    }
}

TEST(ScoreLine, CountsWinsAndMeansOfTheRowsThatCount) {
    const auto rows = [](const QStringList& dates, std::array<double, 5> gains) {
        std::vector<SelectionGains> list;
        for (const QString& riqi : dates) {
            list.push_back({riqi, gains});
        }
        return list;
    };
    const auto flat = [](const QString& count) -> QString {
        return u"总次数:"_s + count +
               u"当日胜率:0当日平均:0 一日胜率:0一日平均:0 二日胜率:0二日平均:0"
               u" 五日胜率:0五日平均:0 十日胜率:0十日平均:0"_s;
    };
    const QStringList fiveOfADay = {u"b"_s, u"b"_s, u"b"_s, u"b"_s, u"b"_s};
    const QStringList mixed = {u"c"_s, u"c"_s, u"b"_s, u"b"_s, u"b"_s, u"b"_s, u"a"_s};
    std::vector<SelectionGains> both = rows({u"b"_s}, {-95, -90, -90.01, -100, 0.004});
    both.push_back({u"a"_s, {10.05, 0, 1, 2, 3}});
    both.push_back({u"a"_s, {1, -1, 1, 2, 3}});
    const struct {
        const char* name;
        std::vector<SelectionGains> rows;
        bool merge;
        QString line;
    } cases[] = {
        {"no row", {}, true, flat(u"0"_s)},
        {"a gain of 0 is no win", rows({u"a"_s}, {}), false, flat(u"1"_s)},
        {"all count without the merge", rows(fiveOfADay, {}), false, flat(u"5"_s)},
        {"the fourth and the fifth of a date fall out", rows(fiveOfADay, {}), true, flat(u"3"_s)},
        {"each date has three of its own", rows(mixed, {}), true, flat(u"6"_s)},
        {"only later gains below -90 count as 0", both, true,
         u"总次数:3当日胜率:66.67当日平均:-27.98 一日胜率:0一日平均:-30.33"
         u" 二日胜率:66.67二日平均:0.67 五日胜率:66.67五日平均:1.33"
         u" 十日胜率:100十日平均:2"_s},
    };
    for (const auto& it : cases) {
        EXPECT_EQ(scoreLine(it.rows, it.merge), it.line) << it.name;
    }
}

TEST_F(SelectionSearchTest, TheGridShowsTheRowsNewestFirst) {
    addSome();
    EXPECT_EQ(search_.search({}),
              u"总次数:2当日胜率:50当日平均:5 一日胜率:50一日平均:-2.5 二日胜率:0二日平均:-2.5"
              u" 五日胜率:100五日平均:7.5 十日胜率:50十日平均:5"_s);
    ASSERT_EQ(grid_.rows(), 3);
    EXPECT_EQ(row(0),
              u"序号|代码|简称|日期|题材|题材涨|大盘涨|总个数|涨停数|一字数|股涨幅|量比|开盘涨|"
              u"前3涨|前10涨|前30涨|后1涨|后2涨|后5涨|后10涨|后1量比|后2开盘"_s);
    EXPECT_EQ(row(1),
              u"1|SZ002460|某股|2016-04-05|锂电池|3.50|0.25|8|5|1|0.00|0.50|0.00|0.00|0.00|0.00|"
              u"-10.00|0.00|5.00|10.00|0.25|-10.00"_s);
    EXPECT_EQ(row(2),
              u"2|SH600519|某股|2016-04-01|白酒|3.50|0.25|8|5|1|10.00|1.50|9.09|0.00|-50.00||"
              u"5.00|-5.00|10.00|-100.00|0.75|-3.08"_s);
    EXPECT_EQ(grid_.colWidth(0), 500);
    EXPECT_EQ(grid_.colWidth(8), 700);
    EXPECT_EQ(grid_.colWidth(21), 800);
    const QList<QPair<int, Colour>> grounds = {{1, 0xFFFF52},  {2, 0x52FFFF},  {4, 0},
                                               {10, 0xFF5252}, {14, 0x52FF52}, {15, 0xFF5252},
                                               {21, 0x52FF52}};
    for (const auto& [col, colour] : grounds) {
        EXPECT_EQ(ground(2, col), colour) << col;
    }
    SelectionQuery query;
    query.condition = u" AND 后10涨=-100 and touguzhangfu>9"_s;
    search_.search(query);
    EXPECT_EQ(grid_.rows(), 2) << "a condition names aliases and columns";
    query.byTheme = true;
    query.theme = u"白"_s;
    EXPECT_TRUE(search_.search(query).startsWith(u"总次数:0当日胜率:0"_s)) << "a part of a name";
    EXPECT_EQ(grid_.rows(), 1);
    EXPECT_TRUE(grid_.redraw());
}

// The score counts the first rows of a day, so that no index of a condition may choose them.
TEST_F(SelectionSearchTest, TheRowsOfADayHaveOneOrderUnderEveryCondition) {
    const QString day = u"2016-04-01 00:00:00"_s;
    const QString figures = u"1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1"_s;
    addTheme(day, u"甲"_s);
    addTheme(day, u"乙"_s);
    addStock(day, u"SZ000001"_s, u"乙"_s, figures);
    addStock(day, u"SH600519"_s, u"甲"_s, figures);
    addStock(day, u"SH600000"_s, u"甲"_s, figures);
    for (const QString& condition :
         {QString(), u"and xuanticaigu.ticai in ('甲','乙')"_s, u"and dm>''"_s,
          u"and date(xuanticaigu.riqi)='2016-04-01'"_s}) {
        SelectionQuery query;
        query.condition = condition;
        search_.search(query);
        EXPECT_EQ(columnTexts(grid_, 1),
                  QStringList({u"代码"_s, u"SH600519"_s, u"SH600000"_s, u"SZ000001"_s}))
            << condition.toStdString();
    }
}

TEST_F(SelectionSearchTest, ARefusedConditionLeavesTheGrid) {
    addSome();
    search_.search({});
    for (const QString& condition : {u" and 开盘\r\n涨<2"_s, u" and nichts>1"_s, u" or ("_s}) {
        SelectionQuery query;
        query.condition = condition;
        EXPECT_THROW(search_.search(query), StoreError);
        EXPECT_EQ(grid_.rows(), 3);
        EXPECT_TRUE(grid_.redraw());
    }
}

TEST_F(SelectionSearchTest, APressHandsCodeThemeAndLastCellOver) {
    EXPECT_FALSE(search_.press(1));
    addSome();
    search_.search({});
    EXPECT_FALSE(search_.press(0));
    const std::optional<PressedRow> pressed = search_.press(2);
    ASSERT_TRUE(pressed);
    EXPECT_EQ(pressed->code + pressed->theme + globals_.dangqiandm, u"SH600519白酒SH600519"_s);
    const QList<QPair<QString, qint32>> cells = {{u"-3.08"_s, -3},       {u"2.50"_s, 2},
                                                 {u"3.50"_s, 4},         {QString(), 0},
                                                 {u"70000.00"_s, 70000}, {u"3000000000"_s, 0}};
    for (const auto& [text, record] : cells) {
        grid_.setTextMatrix(2, 21, text);
        search_.press(2);
        EXPECT_EQ(globals_.dangqianjilu, record) << text.toStdString();
    }
}

TEST_F(SelectionSearchTest, TheOrderAndTheJoinComeFromIndexes) {
    Connection connection = store_.stores.main.open();
    const Recordset plan(connection, u"explain query plan "_s + SelectionQuery().statement());
    QStringList steps;
    for (Recordset it = plan; !it.atEnd(); it.moveNext()) {
        steps << it.value(u"detail").toText();
    }
    ASSERT_EQ(steps.size(), 2) << "no sorting: " << steps.join(u'\n').toStdString();
    EXPECT_TRUE(steps[0].contains(u"xuanticai_riqi"_s)) << steps[0].toStdString();
    EXPECT_TRUE(steps[1].contains(u"xuanticaigu_ticai (ticai=? AND <expr>=?)"_s))
        << steps[1].toStdString();
}

}  // namespace guanchao
