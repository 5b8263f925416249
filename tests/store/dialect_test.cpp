#include "store/dialect.h"

#include "tests/support/test_stores.h"

namespace guanchao {

class DialectTest : public ::testing::Test {
protected:
    // Expressions and their values.
    void expectValues(const std::vector<std::pair<const char*, const char*>>& cases) {
        for (const auto& [expression, value] : cases) {
            EXPECT_EQ(store_.rows(u"select "_s + QString::fromUtf8(expression)).value(0),
                      QString::fromUtf8(value))
                << expression;
        }
    }

    TestStores store_;
};

TEST_F(DialectTest, LikeTakesBothWildcards) {
    expectValues({
        {"'锂电池' like '*电*'", "1"},
        {"'锂电池' like '%电%'", "1"},
        {"'锂电池' like '电*'", "0"},
        {"'' like '**'", "1"},
        {"'abc' like 'A_C'", "1"},
        {"'中a' like '_a'", "1"},
        {"'É' like 'é'", "0"},
        {"'aXbXc' like 'a*X*c'", "1"},
        {"'a' like 'ab'", "0"},
        {"'ab' like 'a'", "0"},
        {"null like '*'", "null"},
        {"'a%c' like 'a!%c' escape '!'", "1"},
        {"'abc' like 'a!%c' escape '!'", "0"},
        {"12 like '1*'", "1"},
        {"'mississippi' like 'm*iss*pi'", "1"},
        {"iif(1>0,'a','b')||iif(0,'a','b')||iif(null,'a','b')||iif('x','a','b')", "abbb"},
    });
}

// Where the versions of the library differ, the program has its own rule.
TEST_F(DialectTest, DaysMeansAndRoundingsHangOnNoVersionOfTheLibrary) {
    expectValues({
        {"date('2016-04-01 09:30:05')", "2016-04-01"},
        {"datetime('2016-04-01')", "2016-04-01 00:00:00"},
        {"datetime('2016-04-01T09:30')", "2016-04-01 09:30:00"},
        {"datetime('2016-04-01 09:30:05.9')", "2016-04-01 09:30:05"},
        {"datetime('2016-04-01 09:30:05+08:00')", "2016-04-01 01:30:05"},
        {"datetime(2457480)", "2016-04-01 12:00:00"},
        {"date('2016-13-01')", "null"},
        {"date('2016-04-00')", "null"},
        {"date('2016-4-1')", "null"},
        {"datetime('2016-04-01 10:60:00')", "null"},
        {"date('')", "null"},
        {"date(null)", "null"},
        {"date('2016-02-30')", "2016-02-30"},
        {"datetime('2015-02-29 23:59:59')", "2015-02-29 23:59:59"},
        {"date('2016-04-32')", "null"},
        {"round(3440.625,2)", "3440.63"},
        {"round(-0.125,2)", "-0.13"},
        {"round((0.01+0.02)/2,2)", "0.01"},  // 0.0149999999999999994
        {"round(-2.4)", "-2"},
        {"round('12.345kg',2)", "12.35"},  // 12.3450000000000006
        {"round(12.5,-1)", "13"},
        {"round(0.1,99)", "0.1"},
        {"round(1e17,2)", "1E+17"},
        {"round(null,2)", "null"},
        {"(select avg(a) from (select 1e16 as a union all select 1 union all select -1e16))", "0"},
        {"(select avg(a) from (select 1 as a union all select null union all select '2.5'))",
         "1.75"},
        {"(select avg(dm) from dmb)", "null"},
    });
}

}  // namespace guanchao
