#include "services/factors.h"

#include "tests/support/qt_printers.h"

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

}  // namespace guanchao
