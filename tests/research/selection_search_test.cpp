#include "research/selection_search.h"

#include "tests/support/store_test.h"

namespace guanchao {

// A store with two themes on two days and three stocks of them.
class SelectionSearchTest : public StoreTest {
protected:
    void addTheme(const QString& riqi, const QString& ticai) {
        store_.run({u"insert into xuanticai values('"_s + riqi + u"','"_s + ticai +
                    u"',3.5,5,1,8,0.25,10.02)"_s});
    }
    // The prices from fuquansp to hou10sp and the volumes, in the order of the columns.
    void addStock(const QString& riqi, const QString& dm, const QString& ticai,
                  const QString& figures = u"1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1"_s) {
        store_.run({u"insert into xuanticaigu values('"_s + riqi + u"','"_s + dm + u"','某股','"_s +
                    ticai + u"',"_s + figures + u")"_s});
    }
    void addSome() {
        const QString older = u"2016-04-01 00:00:00"_s;
        const QString newer = u"2016-04-05 00:00:00"_s;
        addTheme(older, u"白酒"_s);
        addTheme(newer, u"锂电池"_s);
        addStock(older, u"SH600519"_s, u"白酒"_s,
                 u"11,11,11,10,11,22,0,10,300,200,12,12.6,13,11.4,13.2,0,150"_s);
        addStock(newer, u"SZ002460"_s, u"锂电池"_s,
                 u"20,20,20,20,20,20,20,20,100,200,20,18,20,20,21,22,50"_s);
        addStock(u"2016-04-06 00:00:00"_s, u"SZ002460"_s, u"锂电池"_s);  // not its theme's day
        addStock(newer, u"SH600000"_s, u"银行"_s);                       // not chosen
    }
    static SelectionQuery where(const QString& condition) {
        SelectionQuery query;
        query.condition = condition;
        return query;
    }
    // The codes that the grid shows.
    QStringList found(const SelectionQuery& query) {
        search(query);
        return grid_.rows() > 1 ? columnTexts(grid_, 1).mid(1) : QStringList();
    }
    QString search(const SelectionQuery& query) {
        return endOf(search_.search(query, {}, [] {}, {})).line();
    }

    SelectionSearch search_{store_.stores, globals_, grid_};
};

TEST_F(SelectionSearchTest, EachTickedBoxNarrowsTheSearch) {
    addSome();
    const QString newer = u"SZ002460"_s, older = u"SH600519"_s;
    const std::tuple<const char*, void (*)(SelectionQuery&), QStringList> cases[] = {
        {"nothing ticked", [](SelectionQuery&) {}, {newer, older}},
        {"aliases and columns",
         [](SelectionQuery& it) { it.condition = u"  AND 量比>1 and TOUGUZHANGFU>9\r\n "_s; },
         {older}},
        {"a condition is read in small letters",
         [](SelectionQuery& it) { it.condition = u" and dm='SH600519'"_s; },
         {}},
        {"theme", [](SelectionQuery& it) { it.byTheme = true; }, {older}},
        {"a part of a name", [](SelectionQuery& it) { it.byTheme = true, it.theme = u"白"_s; }, {}},
        {"code", [](SelectionQuery& it) { it.byCode = true; }, {newer}},
        {"both dates count", [](SelectionQuery& it) { it.byDates = true; }, {newer}},
    };
    for (const auto& [name, type, codes] : cases) {
        SelectionQuery query;
        query.theme = u" 白酒 "_s;
        query.code = u" sz002460 "_s;
        query.first = query.last = {u"2016"_s, u"4"_s, u" 5 "_s};
        type(query);
        EXPECT_EQ(found(query), codes) << name;
    }
}

static SelectionScore scoreOf(const std::vector<SelectionGains>& rows, bool mergeDates = false) {
    SelectionScore score(mergeDates);
    for (const SelectionGains& row : rows) {
        score.take(row);
    }
    return score;
}

TEST(ScoreLine, AtMostThreeRowsOfADateCountWhereDatesAreMerged) {
    // Of the dates a letter a row.
    const std::tuple<QString, bool, QString> cases[] = {
        {QString(), true, u"0"_s},
        {u"bbbbb"_s, false, u"5"_s},
        {u"bbbbb"_s, true, u"3"_s},
        {u"ccbbbba"_s, true, u"6"_s},
    };
    for (const auto& [dates, merge, counted] : cases) {
        std::vector<SelectionGains> rows;
        for (const QChar date : dates) {
            rows.push_back({date, {}});
        }
        EXPECT_TRUE(begins(scoreOf(rows, merge).line(),
                           u"总次数:"_s + counted + u"当日胜率:0当日平均:0 "_s));
    }
}

TEST(ScoreLine, OnlyLaterGainsBelowNinetyCountAsNone) {
    EXPECT_EQ(scoreOf({{u"b"_s, {-95, -90, -90.01, -100, 0.004}},
                       {u"a"_s, {10.05, 0, 1, 2, 3}},
                       {u"a"_s, {1, -1, 1, 2, 3}}})
                  .line(),
              u"总次数:3当日胜率:66.67当日平均:-27.98 一日胜率:0一日平均:-30.33"
              u" 二日胜率:66.67二日平均:0.67 五日胜率:66.67五日平均:1.33 十日胜率:100十日平均:2"_s);
}

TEST(SelectionScore, FiguresLeaveMissingPricesOut) {
    SelectionScore score = scoreOf({{u"b"_s, {-95, -90, -100, 3, 1}},
                                    {u"a"_s, {10, 0.5, -100, 1, 2}},
                                    {u"a"_s, {1, 4, -100, 2, 0}}});
    const std::pair<size_t, GainFigures> cases[] = {
        {0, {.counted = 3, .wins = 2, .mean = -28, .median = 1, .best = 10, .worst = -95}},
        {1, {.counted = 3, .wins = 2, .mean = -28.5, .median = 0.5, .best = 4, .worst = -90}},
        {2, {}},
        {3, {.counted = 3, .wins = 3, .mean = 2, .median = 2, .best = 3, .worst = 1}},
    };
    for (const auto& [horizon, figures] : cases) {
        EXPECT_EQ(score.figures(horizon), figures) << horizon;
    }
    score.take({u"a"_s, {0, 0, 0, 5, 0}});
    EXPECT_EQ(score.figures(3).median, 2.5);
}

TEST_F(SelectionSearchTest, TheFirstRowsStandBeforeTheRest) {
    addTheme(u"2016-04-01 00:00:00"_s, u"白酒"_s);
    store_.run(
        {u"with recursive n(i) as (select 1 union all select i+1 from n where i<3000)"
         u" insert into xuanticaigu select '2016-04-01 00:00:00',printf('SH%06d',i),'某股',"
         u"'白酒',1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1 from n"_s});
    QList<int> rows;
    const auto firstRows = [&] { rows << grid_.rows(); };
    const SelectionScore score = endOf(search_.search({}, {}, firstRows, {}));
    rows << grid_.rows();
    EXPECT_EQ(rows, QList<int>({1001, 3001}));
    EXPECT_EQ(score.figures(0).counted, 3000);
    EXPECT_EQ(grid_.textMatrix(3000, 0), u"3000"_s);
}

TEST_F(SelectionSearchTest, TheGridShowsTheRowsNewestFirst) {
    addSome();
    search({});
    ASSERT_EQ(grid_.rows(), 3);
    EXPECT_EQ(rowText(grid_, 1),
              u"1|SZ002460|某股|2016-04-05|锂电池|3.50|0.25|8|5|1|0.00|0.50|0.00|0.00|0.00|0.00|"
              u"-10.00|0.00|5.00|10.00|0.25|-10.00"_s);
    EXPECT_EQ(rowText(grid_, 2),
              u"2|SH600519|某股|2016-04-01|白酒|3.50|0.25|8|5|1|10.00|1.50|9.09|0.00|-50.00||"
              u"5.00|-5.00|10.00|-100.00|0.75|-3.08"_s);
    EXPECT_TRUE(search(where(u" and 1=2"_s)).startsWith(u"总次数:0当日胜率:0"_s));
    EXPECT_EQ(grid_.rows(), 1);
}

// The score counts the first rows of a day, so that no index of a condition may choose them.
TEST_F(SelectionSearchTest, TheRowsOfADayHaveOneOrderUnderEveryCondition) {
    const QString day = u"2016-04-01 00:00:00"_s;
    addTheme(day, u"甲"_s);
    addTheme(day, u"乙"_s);
    addStock(day, u"SZ000001"_s, u"乙"_s);
    addStock(day, u"SH600519"_s, u"甲"_s);
    addStock(day, u"SH600000"_s, u"甲"_s);
    for (const QString& condition :
         {QString(), u"and xuanticaigu.ticai in ('甲','乙')"_s, u"and dm>''"_s,
          u"and date(xuanticaigu.riqi)='2016-04-01'"_s}) {
        EXPECT_EQ(found(where(condition)),
                  QStringList({u"SH600519"_s, u"SH600000"_s, u"SZ000001"_s}))
            << condition.toStdString();
    }
}

}  // namespace guanchao
