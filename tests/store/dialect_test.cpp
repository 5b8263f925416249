#include "store/dialect.h"

#include <gtest/gtest.h>

#include <random>

#include "store/sqlite.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

// One value of a plain connection that has none of our functions.
static QString plainValue(const QString& statement) {
    sqlite3* handle = nullptr;
    sqlite3_open(":memory:", &handle);
    sqlite3_stmt* prepared = nullptr;
    sqlite3_prepare_v2(handle, statement.toUtf8().constData(), -1, &prepared, nullptr);
    QString value = u"null"_s;
    if (sqlite3_step(prepared) == SQLITE_ROW && sqlite3_column_type(prepared, 0) != SQLITE_NULL) {
        value = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(prepared, 0)));
    }
    sqlite3_finalize(prepared);
    sqlite3_close(handle);
    return value;
}

class DialectTest : public ::testing::Test {
protected:
    QString value(const QString& expression) {
        return store_.rows(u"select "_s + expression).value(0);
    }

    TestStores store_;
};

TEST_F(DialectTest, LikeTakesBothWildcards) {
    const struct {
        const char* expression;
        const char* result;
    } cases[] = {
        {"'锂电池' like '*电*'", "1"},
        {"'锂电池' like '%电%'", "1"},
        {"'锂电池' like '电*'", "0"},
        {"'锂电池' like '*'", "1"},
        {"'' like '**'", "1"},
        {"'abc' like 'A_C'", "1"},
        {"'中a' like '_a'", "1"},
        {"'É' like 'é'", "0"},
        {"'aab' like '*ab'", "1"},
        {"'aXbXc' like 'a*X*c'", "1"},
        {"'a' like 'ab'", "0"},
        {"'ab' like 'a'", "0"},
        {"null like '*'", "null"},
        {"'a%c' like 'a!%c' escape '!'", "1"},
        {"'abc' like 'a!%c' escape '!'", "0"},
        {"12 like '1*'", "1"},
        {"'中文中' like '中*中'", "1"},
        {"'mississippi' like 'm*iss*pi'", "1"},
    };
    for (const auto& it : cases) {
        EXPECT_EQ(value(QString::fromUtf8(it.expression)), QString::fromUtf8(it.result))
            << it.expression;
    }
}

TEST_F(DialectTest, IifChoosesByTruth) {
    EXPECT_EQ(value(u"iif(1>0,'a','b')||iif(0,'a','b')||iif(null,'a','b')||iif('x','a','b')"_s),
              u"abbb"_s);
    EXPECT_EQ(value(u"iif(0.5,null,1)"_s), u"null"_s);
}

TEST_F(DialectTest, DateAndDatetimeEqualTheBuiltInOnes) {
    QStringList texts = {u"'2016-04-01'"_s,
                         u"'2016-04-01 09:30:05'"_s,
                         u"'2016-13-01'"_s,
                         u"'2016-00-10'"_s,
                         u"'2016-04-00'"_s,
                         u"'2016-04-01 24:00:00'"_s,
                         u"'2016-04-01 10:60:00'"_s,
                         u"'2016-04-01 10:00:60'"_s,
                         u"'2016-4-1'"_s,
                         u"'2016-04-01T09:30:05'"_s,
                         u"'2016-04-01 09:30'"_s,
                         u"'2016-04-01 09:30:05.9'"_s,
                         u"' 2016-04-01'"_s,
                         u"'2016-04-01 '"_s,
                         u"'09:30:05'"_s,
                         u"'2016/04/01'"_s,
                         u"''"_s,
                         u"'abc'"_s,
                         u"null"_s,
                         u"2457480.5"_s,
                         u"2457480"_s,
                         u"'2457480.5'"_s,
                         u"x'323031362d30342d3031'"_s,
                         u"'9999-12-31 23:59:59'"_s,
                         u"'0000-01-01'"_s,
                         u"'2016-04-01 09:30:05+08:00'"_s};
    std::mt19937 random(20261124);
    const auto pick = [&](int below) { return static_cast<int>(random() % unsigned(below)); };
    for (int count = 0; count < 400; ++count) {
        texts << QString::asprintf("'%04d-%02d-%02d %02d:%02d:%02d'", 1900 + pick(300), pick(14),
                                   pick(29), pick(26), pick(62), pick(62));
    }
    for (const QString& text : texts) {
        for (const QString& function : {u"date"_s, u"datetime"_s}) {
            const QString call = function + u'(' + text + u')';
            EXPECT_EQ(value(call), plainValue(u"select "_s + call)) << call.toStdString();
        }
    }
}

// Where the versions of the library differ, the program has its own rule.
TEST_F(DialectTest, DaysMeansAndRoundingsHangOnNoVersionOfTheLibrary) {
    const struct {
        const char* expression;
        const char* result;
    } cases[] = {
        {"date('2016-02-30')", "2016-02-30"},
        {"datetime('2015-02-29 23:59:59')", "2015-02-29 23:59:59"},
        {"datetime('2016-04-31')", "2016-04-31 00:00:00"},
        {"date('2016-04-32')", "null"},
        {"round(3440.625,2)", "3440.63"},
        {"round(-0.125,2)", "-0.13"},
        {"round((0.01+0.02)/2,2)", "0.01"},  // 0.0149999999999999994
        {"round(2.5)", "3"},
        {"round(-2.4)", "-2"},
        {"round(7,2)", "7"},
        {"round('12.345kg',2)", "12.35"},  // 12.3450000000000006
        {"round(12.5,-1)", "13"},
        {"round(0.1,99)", "0.1"},
        {"round(1e17,2)", "1E+17"},
        {"round(null,2)", "null"},
        {"round(1,null)", "null"},
        {"(select avg(a) from (select 1e16 as a union all select 1 union all select -1e16))", "0"},
        {"(select avg(a) from (select 1 as a union all select null union all select '2.5'))",
         "1.75"},
        {"(select avg(dm) from dmb)", "null"},
    };
    for (const auto& it : cases) {
        EXPECT_EQ(value(QString::fromUtf8(it.expression)), QString::fromUtf8(it.result))
            << it.expression;
    }
}

TEST_F(DialectTest, ExpressionIndexesServeTheDates) {
    const QString plan =
        store_
            .rows(
                u"explain query plan select * from xuanticaigu where ticai='a' and date(riqi)='2016-04-01'"_s)
            .value(0);
    EXPECT_TRUE(plan.contains(u"USING INDEX xuanticaigu_ticai (ticai=? AND <expr>=?)"_s))
        << plan.toStdString();
}

}  // namespace guanchao
