#include "market/market_summary.h"

#include "services/delisted.h"
#include "tests/support/store_test.h"

namespace guanchao {

class MarketSummaryTest : public StoreTest {
protected:
    void add(const QString& dm, const QString& jc, double latest, double change,
             double turnover = 0) {
        store_.run({u"insert into dmb(dm,jc,sp,zhangjine,zhangfu,totaljine) values('"_s + dm +
                    u"','"_s + jc + u"',"_s + QString::number(latest) + u',' +
                    QString::number(change) + u',' + QString::number(change) + u',' +
                    QString::number(turnover, 'f', 0) + u')'});
    }
    MarketSummary read() {
        Connection store = store_.stores.main.open();
        return readMarketSummary(store);
    }
};

TEST_F(MarketSummaryTest, LimitsAreThoseOfTheBoardAndInWholeCents) {
    const std::tuple<QString, QString, double, double, int, int> cases[] = {
        {u"SH600001"_s, u"甲"_s, 11, 1, 1, 0},
        {u"SH600001"_s, u"甲"_s, 10.99, 0.99, 0, 0},
        {u"SH600001"_s, u"甲"_s, 3.67, 0.33, 1, 0},  // 3.34 * 1.1 = 3.674
        {u"SH600001"_s, u"甲"_s, 9, -1, 0, 1},
        {u"SH600001"_s, u"ST甲"_s, 10.5, 0.5, 1, 0},
        {u"SH600001"_s, u"*ST甲"_s, 9.5, -0.5, 0, 1},
        {u"SZ300001"_s, u"乙"_s, 11, 1, 0, 0},
        {u"SZ301001"_s, u"ST乙"_s, 12, 2, 1, 0},
        {u"SH688001"_s, u"丙"_s, 8, -2, 0, 1},
        {u"BJ920799"_s, u"丁"_s, 13, 3, 1, 0},
        {u"SH600001"_s, u"甲"_s, 0.05, 0, 0, 0},  // five percent of it is no cent
    };
    for (const auto& [dm, jc, latest, change, up, down] : cases) {
        store_.run({u"delete from dmb"_s});
        add(dm, jc, latest, change);
        const MarketSummary market = read();
        EXPECT_EQ(market.atLimitUp, up) << jc.toStdString() << ' ' << latest;
        EXPECT_EQ(market.atLimitDown, down) << jc.toStdString() << ' ' << latest;
    }
}

TEST_F(MarketSummaryTest, CountsStocksThatAreListedAndHaveAPrice) {
    add(u"SH000001"_s, u"上证指数"_s, 3000, 12, 9e11);
    add(u"SH600001"_s, u"涨"_s, 10, 0.1, 3e8);
    add(u"SH600002"_s, u"平"_s, 10, 0, 1e8);
    add(u"SH600003"_s, u"跌"_s, 10, -0.1, 2e8);
    add(u"SH600004"_s, u"停"_s, 0, 0);
    add(u"SH600005"_s, u"退"_s, 5, 1, 7e8);
    store_.run({u"insert into dmb(dm,jc,sp,zhangjine) values('SH600006','空',null,null)"_s});
    Connection store = store_.stores.main.open();
    markDelisted(store, u"SH600005"_s, u"2026-11-24 10:00:00"_s);
    const MarketSummary market = read();
    EXPECT_EQ((QList<int>{market.rising, market.level, market.falling, market.suspended}),
              (QList<int>{1, 1, 1, 2}));
    EXPECT_EQ(market.turnover, 6e8);
    EXPECT_EQ(market.indexes.value(0).gain, 12);
}

}  // namespace guanchao
