#include "services/factors.h"

#include "services/day_bars.h"
#include "tests/support/evening_market.h"
#include "tests/support/qt_printers.h"
#include "tools/practice_market/practice_events.h"

namespace guanchao {

TEST(FactorsTest, AFactorHoldsFromItsDayOn) {
    const std::optional<FactorList> factors = readFactors(
        "var sh600103hfq={\"total\":3,\"data\":[{\"d\":\"2019-06-03\",\"f\":\"5.3\"},"
        "{\"d\":\"2007-01-18\",\"f\":\"4.0\"},{\"d\":\"1900-01-01\",\"f\":\"1.0\"}]}\n/* {} */",
        u"SH600103"_s);
    ASSERT_TRUE(factors);
    EXPECT_DOUBLE_EQ(factors->on({2026, 11, 20}), 5.3);
    EXPECT_DOUBLE_EQ(factors->on({2019, 6, 3}), 5.3);
    EXPECT_DOUBLE_EQ(factors->on({2019, 6, 2}), 4);
    EXPECT_DOUBLE_EQ(factors->on({1999, 1, 1}), 1);
}

TEST(FactorsTest, WhatIsNoListOfTheCodeGivesNone) {
    for (const QByteArray& body :
         {QByteArray(), QByteArray("<html>"), QByteArray("var sh600103hfq={\"total\":0}"),
          QByteArray("var sz000001hfq={\"total\":0,\"data\":[]}"),
          QByteArray("var sh600103hfq={\"data\":[{\"d\":\"2019-06-03\",\"f\":\"0\"}]}"),
          QByteArray("var sh600103hfq={\"data\":[{\"d\":\"2019-06-03\",\"f\":\"x\"}]}"),
          QByteArray("var sh600103hfq={\"data\":[{\"d\":\"1900-01-01\",\"f\":\"1\"},"
                     "{\"d\":\"2019-06-03\",\"f\":\"2\"}]}")}) {
        EXPECT_FALSE(readFactors(body, u"SH600103"_s)) << body.toStdString();
    }
}

using FactorsMarketTest = EveningMarket;

TEST_F(FactorsMarketTest, APriceFallsByItsDividendAndTheAdjustedOneDoesNot) {
    const Factors factors(client_, services(u"sina"_s));
    const auto factorOn = [&](const QString& dm, const QDate& day) {
        const std::optional<FactorList> list = QCoro::waitFor(factors.fetch(dm, {}));
        return list ? list->on(day) : 0;
    };
    EXPECT_DOUBLE_EQ(factorOn(u"SH600036"_s, exDividendDay), dividendRatio);
    EXPECT_DOUBLE_EQ(factorOn(u"SH600036"_s, exDividendDay.addDays(-1)), 1);
    EXPECT_DOUBLE_EQ(factorOn(u"SH600000"_s, exDividendDay), 1) << "the one row";
    EXPECT_DOUBLE_EQ(factorOn(u"SZ000001"_s, exDividendDay), 1) << "no such page";
    EXPECT_FALSE(QCoro::waitFor(Factors(client_, {}).fetch(u"SH600036"_s, {})));
    const DayBars bars(client_, clock_, services(u"sina"_s));
    const BarsReply reply =
        QCoro::waitFor(bars.fetch(u"SH600036"_s, exDividendDay.addDays(-1), exDividendDay, {}));
    ASSERT_TRUE(reply.days);
    ASSERT_EQ(reply.days->size(), 2);
    const double raw = reply.days->last().close / reply.days->first().close;
    EXPECT_NEAR(raw * dividendRatio, 1, 0.04);
    EXPECT_LT(raw, 1);
}

}  // namespace guanchao
