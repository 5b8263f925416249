// What helps with the conditions of a search: those that are kept, and where one is wrong.
#include <QDir>
#include <QFile>

#include "base/activity.h"
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
    QStringList named;
    for (const NamedCondition& it : KeptConditions(path).named()) {
        named << it.name + u'|' + it.text;
    }
    named.sort();
    EXPECT_EQ(named, QStringList({u"乙/2 = 100%|"_s + text, u"甲|"_s}));
    KeptConditions(path).remove(u"乙/2 = 100%"_s);
    EXPECT_EQ(KeptConditions(path).named().size(), 1);
    KeptConditions(path).keepLast(QString());
    EXPECT_EQ(KeptConditions(path).last(), QString());
    EXPECT_THROW(KeptConditions(u"/dev/null/题材选股.ini"_s).keepLast(text), OperationError);
}

// By the library's own words for it.
TEST_F(SearchConditionTest, TheRefusedPartIsFound) {
    Connection store = store_.stores.main.open();
    const struct {
        QString condition;
        QString refused;
    } cases[] = {
        {u" and 股涨幅>1 and 开盘\n涨<2 and 前3涨<0"_s, u"涨"_s},
        {u" and Nichts>1"_s, u"Nichts"_s},
        {u" and 前3涨<#1"_s, u"#1"_s},
        {u" and machnichts(sp)>1"_s, u"machnichts"_s},
        {u" and (sp>12"_s, u"12"_s},
    };
    for (const auto& it : cases) {
        QString reason;
        try {
            Recordset(store,
                      u"select sp as 股涨幅,sp as 开盘涨,sp as 前3涨 from xuanticaigu"
                      u" where 1=1"_s +
                          it.condition.toLower());
        } catch (const OperationError& failure) {
            reason = failure.reason();
        }
        const std::optional<TextPart> part = refusedPart(it.condition, reason);
        EXPECT_EQ(part ? it.condition.mid(part->first, part->length) : QString(), it.refused)
            << reason.toStdString();
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
