#include "articles/article_query.h"

#include <gtest/gtest.h>

#include "tests/support/qt_printers.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString head =
    u"select id,date(rq) as 日期,zuozhe as 作者,dalei as 大类,xiaolei as 小类,"
    u"biaoti as 标题  FROM wenzhang "_s;
const QString dates = u"where  date(rq)>='2016-04-01' and date(rq)<='2016-05-31'"_s;
const QString order = u" order by date(rq) desc,id desc "_s;

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
         head + u" order by date(rq) desc,id desc  limit 1000"_s},
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

}  // namespace guanchao
