#include "exchange/code_table_update.h"

#include <QRegularExpression>

#include "grid/stock_picker.h"
#include "market/quote_run.h"
#include "tests/support/store_test.h"
#include "themes/watchlist.h"

namespace guanchao {

// On a table of five stocks in each exchange, SH600001 股1 and so on, and the index.
class CodeTableUpdateTest : public StoreTest {
protected:
    CodeTableUpdateTest() {
        store_.addCode(u"SH000001"_s, u"上证指数"_s, 3000, 1);
        for (int it = 1; it <= 5; ++it) {
            store_.addCode(u"SH60000%1"_s.arg(it), u"股%1"_s.arg(it), 8, 5);
            store_.addCode(u"SZ00000%1"_s.arg(it), u"深%1"_s.arg(it), 8, 5);
        }
        list_ = stocks();
        http_.answer = [this](const QString& path) -> std::optional<QByteArray> {
            const QStringList& list = path.contains(u"hs_bjs"_s) ? beijing_ : list_;
            if (path.contains(u"StockCount"_s)) {
                return told_.value_or('"' + QByteArray::number(list.size()) + '"');
            }
            return path.contains(u"page=1&"_s) ? sinaPage(list) : "[]";
        };
    }

    static QByteArray sinaPage(const QStringList& list) {
        const QStringList rows = textsOf(list, [](const QString& it) {
            return u"{\"symbol\":\"%1\",\"name\":\"%2\"}"_s.arg(it.section(u'|', 0, 0).toLower(),
                                                                it.section(u'|', 1));
        });
        return '[' + rows.join(u',').toUtf8() + ']';
    }
    QStringList stocks() {
        return store_.rows(u"select dm,jc from dmb where dm!='SH000001' order by rowid"_s);
    }
    QStringList delisted() { return store_.rows(u"select dm from tuishi order by dm"_s); }

    CodeTableResult update(bool withBeijing = false) {
        RunControl control;
        const QString exceptions = QStringLiteral(GUANCHAO_SOURCE_DIR "/data/initials.csv");
        CodeTableUpdate run(store_.stores, clock_, http_, {{{}, {}, 0, 1, 0, u"sina"_s}},
                            exceptions, control, [](const RunProgress&) {});
        return endOf(run.run(withBeijing, {}));
    }

    QStringList list_;  // of Shanghai and Shenzhen: what the service has
    QStringList beijing_ = {u"BJ920001|京一"_s};
    std::optional<QByteArray> told_;
};

// "before>after": one row for another, a new one, or none any more.
static void change(QStringList& rows, const QString& words) {
    rows.removeAll(words.section(u'>', 0, 0));
    if (const QString come = words.section(u'>', 1); !come.isEmpty()) {
        rows << come;
    }
}

TEST_F(CodeTableUpdateTest, WhatAListChanges) {
    const QString mark = u"insert into tuishi(dm) values('SZ000005')"_s;
    const QString beijing = u"insert into dmb(dm,jc) values('BJ920009','京九')"_s;
    const QString third = u"SZ000003|深3>SZ000003|"_s, fifth = u"SZ000005|深5>"_s;
    const struct {
        const char* name;
        QString before, list, table;  // a statement; what changes in the list, and by it
        QStringList delisted;
        bool wantsBeijing = false;
    } cases[] = {
        {"nothing new", {}, {}, {}, {}},
        {"a new one", {}, u">SZ301001|凯淳 股份"_s, u">SZ301001|凯淳股份"_s, {}},
        {"another name", {}, third + u"*ST深"_s, third + u"*ST深"_s, {}},
        {"the same name in other letters", {}, third + u"深 ３"_s, {}, {}},
        {"the mark of a day", {}, third + u"XD深3"_s, {}, {}},
        {"no longer listed", {}, fifth, {}, {u"SZ000005"_s}},
        {"marked, and still not listed", mark, fifth, {}, {u"SZ000005"_s}},
        {"listed again", mark, {}, {}, {}},
        {"Beijing unwanted stays as it is", beijing, {}, {}, {}},
        {"Beijing wanted", {}, {}, u">BJ920001|京一"_s, {}, true},
    };
    const QStringList all = list_;
    for (const auto& it : cases) {
        SCOPED_TRACE(it.name);
        store_.run({u"delete from tuishi"_s, u"delete from dmb"_s});
        for (const QString& row : all) {
            store_.addCode(row.section(u'|', 0, 0), row.section(u'|', 1), 8, 5);
        }
        store_.addCode(u"SH000001"_s, u"上证指数"_s, 3000, 1);
        if (!it.before.isEmpty()) {
            store_.run({it.before});
        }
        QStringList expected = stocks();
        list_ = all;
        change(list_, it.list);
        change(expected, it.table);
        const CodeTableResult result = update(it.wantsBeijing);
        EXPECT_TRUE(result.hasList) << result.words().toStdString();
        QStringList found = stocks();
        found.sort();
        expected.sort();
        EXPECT_EQ(found, expected);
        EXPECT_EQ(delisted(), it.delisted);
    }
}

TEST_F(CodeTableUpdateTest, NewAndRenamedStocksHaveTheirInitials) {
    list_.replaceInStrings(u"深3"_s, u"平安银行"_s);
    list_ << u"SH688001|华兴源创"_s;
    update();
    EXPECT_EQ(store_.rows(u"select dm,numdm,shenmu,newdmtime from dmb where length(shenmu)>2"_s),
              QStringList(
                  {u"SZ000003|000003|payh|null"_s, u"SH688001|688001|hxyc|2026-11-24 10:00:00"_s}));
}

TEST_F(CodeTableUpdateTest, AListThatCantBeOfAllChangesNothing) {
    const QStringList before = stocks();
    const std::pair<QString, QString> cases[] = {
        {u"^SZ"_s, u"名单里没有深市的股票"_s},
        {u"^SH60000[12]"_s, u"代码表里沪市的 5 只，只有 3 只在名单里"_s},
        {u"^BJ"_s, u"名单里没有北交所的股票"_s},
    };
    const QStringList all = QStringList{u"SH600099|新股"_s} + list_, beijing = beijing_;
    for (const auto& [lacking, words] : cases) {
        const QRegularExpression codes(lacking);
        list_ = all;
        beijing_ = beijing;
        for (QStringList* list : {&list_, &beijing_}) {
            list->removeIf([&](const QString& it) { return it.contains(codes); });
        }
        const CodeTableResult result = update(true);
        EXPECT_FALSE(result.hasList);
        EXPECT_TRUE(holds(result.words(), words));
        EXPECT_EQ(stocks() + delisted(), before);
    }
}

TEST_F(CodeTableUpdateTest, AListWithoutItsNumberDelistsNobody) {
    told_ = "\"11\"";
    list_.last() = u"SH600099|新股"_s;
    EXPECT_TRUE(update().words().contains(u"这次不判断退市"_s));
    EXPECT_EQ(delisted(), QStringList());
    EXPECT_TRUE(stocks().contains(u"SH600099|新股"_s));
}

// In a store of an earlier program too, which has no table of them.
TEST_F(CodeTableUpdateTest, WhatIsDelistedStaysAndIsAskedForNoMore) {
    store_.run({u"drop table tuishi"_s, u"insert into zixuangu(dm) values('SZ000005')"_s});
    FakeHttp quotes;
    QuoteFeed feed(store_.stores, globals_, clock_, QuoteSource(quotes, clock_, {Service()}));
    QuoteRun run(store_.stores, clock_, feed);
    const auto asked = [&] {
        quotes.paths.clear();
        endOf(run.run([](const QuoteProgress&) {}, {}));
        return quotes.paths.join(u' ').count(u"sz00000"_s);
    };
    EXPECT_EQ(asked(), 5);
    list_.removeIf([](const QString& it) { return it.startsWith(u"SZ000005"_s); });
    EXPECT_EQ(update().changes.delisted.size(), 1);
    EXPECT_EQ(asked(), 4);
    Watchlist(store_.stores, dialogs_, removals_).list(grid_);
    EXPECT_EQ(grid_.textMatrix(1, 11), u"已退市"_s);
    EXPECT_EQ(grid_.textMatrix(1, 2), u"深5"_s) << "its name is that of the table";
    EXPECT_EQ(store_.rows(u"select sp,zhangfu from dmb where dm='SZ000005'"_s),
              QStringList{u"8|0"_s})
        << "it moves its themes no more";
}

}  // namespace guanchao
