#include "research/kept_conditions.h"
#include "research/refused_condition.h"
#include "research/selection_search.h"
#include "store/recordset.h"
#include "tests/support/store_test.h"

namespace guanchao {

class SearchConditionTest : public StoreTest {};

TEST_F(SearchConditionTest, AreKeptByTheirNames) {
    const QString path = store_.folder() + u"题材选股.ini"_s;
    EXPECT_FALSE(KeptConditions(path).last());
    const QString text = u" and 开盘\n涨<2; 100% and a=\"b\""_s;
    KeptConditions(path).keepLast(text);
    KeptConditions(path).keep({u"乙/2 = 100%"_s, text});
    KeptConditions(path).keep({u"甲"_s, u"旧"_s});
    KeptConditions(path).keep({u"甲"_s, u""_s});
    EXPECT_EQ(KeptConditions(path).last(), text);
    QStringList named =
        textsOf(KeptConditions(path).named(),
                [](const NamedCondition& it) -> QString { return it.name + u'|' + it.text; });
    named.sort();
    EXPECT_EQ(named, QStringList({u"乙/2 = 100%|"_s + text, u"甲|"_s}));
    KeptConditions(path).remove(u"乙/2 = 100%"_s);
    EXPECT_EQ(KeptConditions(path).named().size(), 1);
    KeptConditions(path).keepLast(QString());
    EXPECT_EQ(KeptConditions(path).last(), QString());
    EXPECT_THROW(KeptConditions(u"/dev/null/题材选股.ini"_s).keepLast(text), OperationError);
}

TEST_F(SearchConditionTest, ARefusalNamesThePartAndWhatIsWrongWithIt) {
    Connection store = store_.stores.main.open();
    const std::tuple<QString, QString, QString> cases[] = {
        {u" and 股涨幅>1 and 开盘\r\n涨<2 and 前3涨<0"_s, u"涨"_s, u"“涨”这里读不通。"_s},
        {u" and Nichts>1"_s, u"Nichts"_s, u"没有“Nichts”这一列。"_s},
        {u" and 前3涨<#1"_s, u"#1"_s, u"“#1”这里读不通。"_s},
        {u" and machnichts(sp)>1"_s, u"machnichts"_s, u"没有“machnichts”这个函数。"_s},
        {u" and riqi>'2016'"_s, u"riqi"_s,
         u"两个表都有“riqi”，请写成 xuanticai.riqi 或 xuanticaigu.riqi。"_s},
        {u" and (sp>12"_s, u"(sp>12"_s, u"括号没有配对。"_s},
        {u" and (sp>12 or jc='(')\n and jc>'a"_s, u"'a"_s, u"引号没有配对。"_s},
        {u"sp>12"_s, u"sp>12"_s, u"条件要以 and 开头。"_s},
        {u" and sp>1 limit 5"_s, u" and sp>1 limit 5"_s,
         u"这个条件不能用在搜索里，它只能是接在后面的比较。"_s},
    };
    SelectionQuery query;
    for (const auto& [condition, part, words] : cases) {
        query.condition = condition;
        const QString reason =
            raisedBy<OperationError>([&] { Recordset(store, query.statement()); }).reason();
        const Refusal refusal = refusalOf(condition, reason);
        const QString shown = QString(condition).remove(u'\r');
        EXPECT_EQ(shown.mid(refusal.part.first, refusal.part.length), part) << reason.toStdString();
        EXPECT_EQ(refusal.words, words) << reason.toStdString();
    }
}

TEST_F(SearchConditionTest, TheStoreKnowsEveryOfferedColumnAndCondition) {
    Connection store = store_.stores.main.open();
    SelectionQuery query;
    for (const QString& name : conditionColumns()) {
        query.condition = u" and "_s + name + u">0"_s;
        EXPECT_NO_THROW(Recordset(store, query.statement())) << name.toStdString();
    }
    for (const NamedCondition& it : offeredConditions()) {
        query.condition = it.text;
        EXPECT_NO_THROW(Recordset(store, query.statement())) << it.name.toStdString();
    }
}

}  // namespace guanchao
