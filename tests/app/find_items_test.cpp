#include "app/find_items.h"

#include "tests/support/store_test.h"

namespace guanchao {

using FindItemsTest = StoreTest;

// Equal, then beginning, then holding; stocks before themes.
TEST_F(FindItemsTest, FindsByNameCodeAndInitialsTheBestFirst) {
    store_.run({u"delete from dmb"_s,
                u"insert into dmb(dm,jc,shenmu) values('SH600519','贵州茅台','gzmt'),"
                u"('SH688339','亿华通','yht'),('SZ000858','五粮液','wly'),"
                u"('SZ300519','新光药业','xgyy')"_s});
    store_.addMember(u"白酒"_s, u"SH600519"_s);
    store_.addMember(u"白酒概念"_s, u"SH600519"_s);
    store_.addMember(u"贵州"_s, u"SH600519"_s);
    const QList<FindItem> items = readFindItems(store_.stores);
    const std::pair<QString, QStringList> cases[] = {
        {u"600519"_s, {u"贵州茅台"_s}},
        {u"sz000858"_s, {u"五粮液"_s}},
        {u"519"_s, {u"贵州茅台"_s, u"新光药业"_s}},
        {u"GZ"_s, {u"贵州"_s, u"页：贵州"_s, u"贵州茅台"_s}},
        {u"bj"_s, {u"白酒"_s, u"页：白酒"_s, u"白酒概念"_s, u"页：白酒概念"_s}},
        {u" 酒 "_s, {u"白酒"_s, u"白酒概念"_s, u"页：白酒"_s, u"页：白酒概念"_s}},
        {u"无"_s, {}},
        {u""_s, {}},
    };
    for (const auto& [typed, names] : cases) {
        QStringList found;
        for (const FindItem& it : foundItems(items, typed, 10)) {
            found << (it.kind == FindItem::Kind::page ? u"页："_s : QString()) + it.name;
        }
        EXPECT_EQ(found, names) << typed.toStdString();
    }
    EXPECT_EQ(foundItems(items, u"贵"_s, 1).size(), 1);
}

}  // namespace guanchao
