#include "themes/treemap.h"
#include "base/short_amounts.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>

#include "tests/support/store_test.h"
#include "themes/theme_map.h"

namespace guanchao {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

static double areaOf(const QRectF& it) {
    return it.width() * it.height();
}

static QList<double> randomValues(int count) {
    std::mt19937 random(11);  // NOLINT(bugprone-random-generator-seed): the same in every run
    std::lognormal_distribution<double> value(0, 2);
    QList<double> values;
    for (int at = 0; at < count; ++at) {
        values << value(random);
    }
    return values;
}

static int overlaps(const QList<QRect>& places) {
    int count = 0;
    for (qsizetype at = 0; at < places.size(); ++at) {
        for (qsizetype other = at + 1; other < places.size(); ++other) {
            count += places[at].intersects(places[other]) ? 1 : 0;
        }
    }
    return count;
}

TEST(Treemap, AreasAreInProportionAndFillTheRoomAndWhatHasNoneTakesNothing) {
    const QList<QList<double>> cases = {{1}, {3, 3, 3}, {6, 6, 4, 3, 2, 2, 1}, randomValues(600)};
    for (const QRectF& room : {QRectF(0, 0, 600, 400), QRectF(7, 3, 300, 900)}) {
        for (const QList<double>& values : cases) {
            const QList<QRectF> places = treemapOf(values, room);
            const double total = std::reduce(values.begin(), values.end());
            for (qsizetype at = 0; at < values.size(); ++at) {
                EXPECT_NEAR(areaOf(places[at]), values[at] / total * areaOf(room), 1e-6) << at;
                EXPECT_TRUE(room.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(places[at])) << at;
            }
            const QList<QRect> pixels = inPixels(places);
            EXPECT_EQ(overlaps(pixels), 0) << values.size();
            qint64 filled = 0;
            for (const QRect& it : pixels) {
                filled += it.isEmpty() ? 0 : qint64{it.width()} * it.height();
            }
            EXPECT_EQ(filled, std::lround(areaOf(room))) << "no gap, of " << values.size();
        }
    }
    const double none[] = {0, -5, nan, std::numeric_limits<double>::infinity()};
    for (const double it : none) {
        const QList<QRectF> places = treemapOf({1, it, 1}, {0, 0, 10, 5});
        EXPECT_TRUE(places[1].isEmpty()) << it;
        EXPECT_TRUE(inPixels(places)[1].isEmpty()) << it;
        EXPECT_NEAR(areaOf(places[0]) + areaOf(places[2]), 50, 1e-9) << it;
        EXPECT_TRUE(treemapOf({it, it}, {0, 0, 10, 5})[0].isEmpty()) << it;
    }
    EXPECT_TRUE(treemapOf({}, {0, 0, 10, 5}).isEmpty());
    EXPECT_TRUE(treemapOf({1, 2}, {0, 0, 0, 5})[0].isEmpty());
}

TEST(Treemap, EachWayLeadsToThePlaceBesideTheMiddleAndBackIntoTheMap) {
    const QList<QRect> places = {
        {0, 0, 10, 10}, {10, 0, 10, 4}, {10, 4, 10, 6}, {}, {0, 10, 20, 5}};
    const auto go = [&](qsizetype from, MapWay way) { return neighbourOf(places, from, way); };
    EXPECT_EQ(go(0, MapWay::right), 2) << "at the height of its middle";
    EXPECT_EQ(go(1, MapWay::left), 0);
    EXPECT_EQ(go(1, MapWay::down), 2);
    EXPECT_EQ(go(0, MapWay::down), 4);
    EXPECT_EQ(go(4, MapWay::up), 0);
    EXPECT_EQ(go(0, MapWay::left), -1);
    EXPECT_EQ(go(4, MapWay::down), -1);
    const QList<QRect> many = inPixels(treemapOf(randomValues(300), {0, 0, 1900, 1000}));
    for (qsizetype at = 0; at < many.size(); ++at) {
        const qsizetype right = neighbourOf(many, at, MapWay::right);
        EXPECT_TRUE(many[at].isEmpty() || right >= 0 || many[at].right() == 1899) << at;
    }
}

using ThemeMapTest = StoreTest;

TEST_F(ThemeMapTest, AThemeHasTheGainOfTheMainWindowAndWhatTheStoreLacksIsNoNumber) {
    store_.run(
        {u"insert into dmb(dm,jc,zhangfu,totaljine) values('SH600000','浦发',3,2e8),"
         u"('SH600519','茅台',-1.5,1e8),('SH600036','',null,null)"_s});
    store_.addMember(u"甲"_s, u"SH600000"_s, 4);
    store_.addMember(u"甲"_s, u"SH600519"_s, 4);
    store_.addMember(u"甲"_s, u"SH999999"_s, 4);
    store_.run({u"insert into dzhzhuti(zhutiname,dm,guanzhudu) values('乙''','SH600036',-1)"_s});
    store_.addMember(u"空"_s, u"SH999999"_s);
    const QList<MapBox> themes = readThemeBoxes(store_.stores);
    EXPECT_EQ(textsOf(themes,
                      [](const MapBox& it) -> QString { return it.name + u' ' + themeWords(it); }),
              QStringList({u"乙' 无行情　1 只　成交额 –　关注度 -1"_s,
                           u"甲 +0.75%　2 只　成交额 3.000亿　关注度 4"_s}));
    EXPECT_EQ(themes[1].area(MapArea::members) + themes[1].area(MapArea::attention), 6);
    EXPECT_TRUE(std::isnan(themes[0].area(MapArea::turnover)));
    store_.run({u"update dzhzhuti set xiangguandu=9 where dm='SH600519'"_s});
    const QList<MapBox> stocks = readStockBoxes(store_.stores, u"甲"_s);
    ASSERT_EQ(stocks.size(), 2);
    EXPECT_EQ(stocks[1].key + stocks[1].name + stockWords(stocks[1]),
              u"SH600519茅台-1.50%　成交额 1.000亿　相关度 9"_s);
    EXPECT_EQ(readStockBoxes(store_.stores, u"乙'"_s).value(0).name, u"SH600036"_s);
    EXPECT_EQ(gainWords(-0.001) + gainWords(0) + gainWords(0.005), u"0.00%0.00%+0.01%"_s);
}

}  // namespace guanchao
