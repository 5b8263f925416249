#include "articles/article_query.h"

#include <gtest/gtest.h>

#include "store/store_error.h"
#include "store/values.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString head =
    u"select id,date(rq) as 日期,zuozhe as 作者,dalei as 大类,xiaolei as 小类,"
    u"biaoti as 标题  FROM wenzhang "_s;
const QString dates = u"where  date(rq)>='2016-04-01' and date(rq)<='2016-05-31'"_s;
const QString order = u" order by date(rq) desc "_s;

ArticleQuery query() {
    ArticleQuery query;
    query.first = {u"2016"_s, u"4"_s, u"1"_s};
    query.last = {u"2016"_s, u"5"_s, u"31"_s};
    return query;
}

}  // namespace

TEST(ArticleQueryTest, TheStatementFollowsTheBoxesWordByWord) {
    const struct {
        const char* name;
        void (*type)(ArticleQuery&);
        QString statement;
    } cases[] = {
        {"nothing typed", [](ArticleQuery&) {}, head + dates + order},
        {"blanks", [](ArticleQuery& it) { it.author = it.titleWord = it.limit = u"  "_s; },
         head + dates + order},
        {"all",
         [](ArticleQuery& it) {
             it.all = true;
             it.author = u"张三"_s;
             it.limit = u"5"_s;
         },
         head + u" order by date(rq) desc  limit 1000"_s},
        {"everything",
         [](ArticleQuery& it) {
             it.author = u" 张三 "_s;
             it.category = u"主题"_s;
             it.subcategory = u"白酒 "_s;
             it.titleWord = u" it's"_s;
             it.contentWords = {u"a"_s, u"b'"_s, u"c"_s};
             it.limit = u" 20篇"_s;
         },
         head + dates +
             u" and zuozhe='张三' and dalei='主题' and xiaolei='白酒' and biaoti like '%it''s%'"
             u" and leirong like '%a%' and leirong like '%b''%' and leirong like '%c%'"_s +
             order + u" limit 20 "_s},
        {"not escaped", [](ArticleQuery& it) { it.author = u"O'N"_s; },
         head + dates + u" and zuozhe='O'N'"_s + order},
        {"the third word alone",
         [](ArticleQuery& it) {
             it.contentWords[2] = u"c"_s;
             it.limit = u"abc"_s;
         },
         head + dates + u" and leirong like '%c%'"_s + order + u" limit 0 "_s},
        {"more than any", [](ArticleQuery& it) { it.limit = u"1e20"_s; },
         head + dates + order + u" limit 2147483647 "_s},
        {"no listed dates",
         [](ArticleQuery& it) {
             it.first = {u"2015"_s, u"2"_s, u"29"_s};
             it.last = {u"2015"_s, u"13"_s, u"1"_s};
         },
         head + u"where  date(rq)>='2015-03-01' and date(rq)<='2016-01-01'"_s + order},
    };
    for (const auto& it : cases) {
        ArticleQuery typed = query();
        it.type(typed);
        EXPECT_EQ(typed.statement(), it.statement) << it.name;
    }
}

TEST(DateTrioTest, DaysFollowTheMonth) {
    const struct {
        QString month;
        int days;
        QString dayAfter31, dayAfter29;
    } cases[] = {
        {u"1"_s, 31, u"31"_s, u"29"_s}, {u"2"_s, 28, u"28"_s, u"28"_s},
        {u"4"_s, 30, u"30"_s, u"29"_s}, {u"8"_s, 31, u"31"_s, u"29"_s},
        {u"9"_s, 30, u"30"_s, u"29"_s}, {u"11月"_s, 30, u"30"_s, u"29"_s},
        {u"0"_s, 0, u"31"_s, u"29"_s},  {u"13"_s, 0, u"31"_s, u"29"_s},
        {u""_s, 0, u"31"_s, u"29"_s},
    };
    for (const auto& it : cases) {
        const QStringList days = daysOfMonth(it.month);
        EXPECT_EQ(days.size(), it.days) << it.month.toStdString();
        EXPECT_EQ(days.isEmpty() ? 0 : days.last().toInt(), it.days);
        EXPECT_EQ(dayAfterMonth(it.month, u"31"_s), it.dayAfter31) << it.month.toStdString();
        EXPECT_EQ(dayAfterMonth(it.month, u"29"_s), it.dayAfter29) << it.month.toStdString();
    }
}

TEST(DateTrioTest, TypedDatesRollOn) {
    const struct {
        DateTexts typed;
        QString date;
    } cases[] = {
        {{u"2016"_s, u"2"_s, u"29"_s}, u"2016-02-29"_s},
        {{u"2015"_s, u"2"_s, u"29"_s}, u"2015-03-01"_s},
        {{u"2015年"_s, u"14"_s, u"31"_s}, u"2016-03-02"_s},
        {{u"2015"_s, u"1"_s, u"0"_s}, u"2014-12-31"_s},
        {{u"2015"_s, u"0"_s, u"1"_s}, u"2014-12-01"_s},
        {{u"2015"_s, u"-11"_s, u"1"_s}, u"2014-01-01"_s},
        {{u"9999"_s, u"12"_s, u"31"_s}, u"9999-12-31"_s},
    };
    for (const auto& it : cases) {
        EXPECT_EQ(dateText(packDate(it.typed)), it.date);
    }
    EXPECT_LT(packDate({}), QDate(1, 1, 1)) << "empty boxes lie before every article";
    for (const DateTexts& far : {DateTexts{u"9999"_s, u"13"_s, u"1"_s},
                                 {u"9999"_s, u"12"_s, u"32"_s},
                                 {u"99999"_s, u"1"_s, u"1"_s},
                                 {u"32767"_s, u"32767"_s, u"32767"_s},
                                 {u"-32768"_s, u"-32768"_s, u"-32768"_s},
                                 {u"2016"_s, u"1e300"_s, u"1"_s},
                                 {u"999999999"_s, u"1"_s, u"1"_s}}) {
        EXPECT_THROW(packDate(far), OperationError) << far.year.toStdString();
    }
    EXPECT_EQ(dateTexts(QDate(2016, 4, 1)), (DateTexts{u"2016"_s, u"4"_s, u"1"_s}));
    EXPECT_EQ(dateTexts(QDate()), DateTexts{});
}

}  // namespace guanchao
