#include "themes/watchlist.h"
#include "tests/themes/theme_fixture.h"
#include "themes/watch_lists.h"
#include "themes/watch_order.h"
#include "themes/watch_tables.h"

namespace guanchao {

class WatchlistTest : public ThemeFixture {
protected:
    WatchlistTest() {
        store_.addCode(u"SZ000001"_s, u"平安银行"_s, 9, -3);
        store_.run({u"update dmb set newhqtime='2026-11-24 09:59:00' where dm='SH600519'"_s});
    }

    QStringList column(int col, const QString& list = {}) {
        watchlist_.list(grid_, list);
        return columnTexts(grid_, col).sliced(1);
    }
    QStringList codes(const QString& list = {}) { return column(1, list); }
    void addAll(const QString& list = {}) {
        for (const QString& dm : {u"SH600000"_s, u"SH600519"_s, u"SZ000001"_s}) {
            watchlist_.add(dm, {}, list);
        }
    }
    void move(const QStringList& dms, const QString& before, const QString& list = {}) {
        moveInList(store_.stores, list, codes(list), dms, before);
    }
    QString create(const QString& name) {
        dialogs_.typed = name;
        return outcomeOf(lists_.create({})).value_or(QString());
    }

    Watchlist watchlist_{store_.stores, dialogs_, removals_};
    WatchLists lists_{store_.stores, dialogs_, removals_};
};

TEST_F(WatchlistTest, TheListShowsTheQuotesOfKnownCodesAndATypedOneIsAddedOnce) {
    EXPECT_EQ(column(1), QStringList());
    for (const QString& dm : {u"SH600000"_s, u"SH699999"_s, u"SH600519"_s}) {
        watchlist_.add(dm, u"旧名"_s);
    }
    EXPECT_EQ(column(2), QStringList({u"贵州茅台"_s, u"浦发银行"_s}));
    EXPECT_EQ(column(11), QStringList({u"2026-11-24 09:59:00"_s, QString()}));
    store_.run({u"update dmb set zhangfu=1"_s});
    EXPECT_EQ(column(1), QStringList({u"SH600000"_s, u"SH600519"_s})) << "as they came";
    watchlist_.remove(u"SH600519"_s, u"贵州茅台"_s);
    EXPECT_EQ(dialogs_.shown.last(), u"观潮台|删除自选股'贵州茅台'完成!"_s);
    EXPECT_EQ(column(11), QStringList({QString()}))
        << "no time is left from the row that was there";
    store_.run({u"delete from zixuangu"_s});
    EXPECT_FALSE(outcomeOf(watchlist_.addTyped({}, {})));
    dialogs_.typed = u"sh600000"_s;
    EXPECT_TRUE(outcomeOf(watchlist_.addTyped({}, {})));
    EXPECT_FALSE(outcomeOf(watchlist_.addTyped({}, {})));
    EXPECT_EQ(dialogs_.shown.last(), u"观潮台|此股票已在自选股中。"_s);
    EXPECT_EQ(store_.rows(u"select dm,jc from zixuangu"_s), QStringList{u"SH600000|"_s})
        << "in upper case";
}

TEST_F(WatchlistTest, TheOwnOrderBeginsWithAMoveAndOutlastsWhatLeavesAndComes) {
    addAll();
    EXPECT_EQ(codes(), QStringList({u"SH600519"_s, u"SH600000"_s, u"SZ000001"_s})) << "best first";
    move({u"SZ000001"_s}, u"SH600519"_s);
    const QStringList own = {u"SZ000001"_s, u"SH600519"_s, u"SH600000"_s};
    EXPECT_EQ(codes(), own);
    store_.run({u"update dmb set zhangfu=9 where dm='SH600000'"_s});
    EXPECT_EQ(codes(), own) << "whatever the gains";
    watchlist_.removeAll({u"SH600519"_s, u"SZ000001"_s}, {});
    watchlist_.add(u"SH600519"_s, {});
    store_.addCode(u"SZ000002"_s, u"万科"_s, 9, 10);
    watchlist_.add(u"SZ000002"_s, {});
    EXPECT_EQ(codes(), QStringList({u"SH600519"_s, u"SH600000"_s, u"SZ000002"_s}))
        << "back in its place, and a new one behind";
    move({u"SH600000"_s, u"SZ000002"_s}, u"SH600519"_s);
    bringBack(*removals_.last(watchlistPlace));
    EXPECT_EQ(codes(), QStringList({u"SZ000001"_s, u"SH600000"_s, u"SZ000002"_s, u"SH600519"_s}))
        << "the one that was there again came back no second time";
}

TEST_F(WatchlistTest, AMoveKnowsItsPlaceByTheStockBehindIt) {
    const QStringList order = {u"a"_s, u"b"_s, u"c"_s, u"d"_s};
    const std::tuple<QStringList, QString, QString> cases[] = {
        {{u"d"_s}, u"a"_s, u"dabc"_s},         {{u"a"_s}, {}, u"bcda"_s},
        {{u"a"_s, u"c"_s}, u"d"_s, u"bacd"_s}, {{u"b"_s}, u"b"_s, u"acdb"_s},
        {{u"b"_s}, u"gone"_s, u"acdb"_s},      {{u"new"_s}, u"b"_s, u"anewbcd"_s}};
    for (const auto& [moved, before, expected] : cases) {
        EXPECT_EQ(movedBefore(order, moved, before).join(QString()), expected)
            << qPrintable(moved.join(u' ')) << qPrintable(before);
    }
}

TEST_F(WatchlistTest, AFurtherListHasAnotherNameAndItsOwnStocks) {
    addAll();
    EXPECT_EQ(create(u" 短线 "_s), u"短线"_s);
    for (const QString& refused : {u"短线"_s, u"自选股"_s, QString(21, u'长'), u"  "_s}) {
        EXPECT_EQ(create(refused), QString()) << qPrintable(refused);
    }
    EXPECT_EQ(lists_.names(), QStringList{u"短线"_s});
    watchlist_.add(u"SH600000"_s, {}, u"短线"_s);
    EXPECT_EQ(lists_.transfer({u"SZ000001"_s, u"SH600000"_s}, {}, u"短线"_s, WatchLists::Way::copy),
              u"复制了 1 只股票到“短线”，1 只原来就在那里"_s);
    EXPECT_EQ(codes(u"短线"_s), QStringList({u"SH600000"_s, u"SZ000001"_s})) << "as they came";
    EXPECT_EQ(lists_.transfer({u"SH600519"_s, u"SH600000"_s}, {}, u"短线"_s, WatchLists::Way::move),
              u"移动了 1 只股票到“短线”，1 只原来就在那里"_s);
    EXPECT_EQ(codes(), QStringList{u"SZ000001"_s});
    lists_.transfer({u"SH600000"_s}, u"短线"_s, {}, WatchLists::Way::move);
    EXPECT_EQ(store_.rows(u"select dm,jc from zixuangu"_s),
              QStringList({u"SZ000001|"_s, u"SH600000|浦发银行"_s}));
}

TEST_F(WatchlistTest, ListsAreRenamedAndDeletedWithStocksAndOrderAndComeBack) {
    create(u"甲"_s);
    create(u"乙"_s);
    addAll(u"甲"_s);
    move({u"SZ000001"_s}, u"SH600000"_s, u"甲"_s);
    dialogs_.typed = u"丙"_s;
    EXPECT_EQ(outcomeOf(lists_.rename(u"甲"_s, {})), u"丙"_s);
    EXPECT_EQ(lists_.names(), QStringList({u"丙"_s, u"乙"_s}));
    const QStringList own = {u"SZ000001"_s, u"SH600000"_s, u"SH600519"_s};
    EXPECT_EQ(codes(u"丙"_s), own);
    dialogs_.answer = false;
    EXPECT_FALSE(outcomeOf(lists_.remove(u"丙"_s, {})));
    EXPECT_EQ(dialogs_.shown.last(), u"观潮台|确实要删除列表“丙”（3 只股票）吗?"_s);
    dialogs_.answer = true;
    EXPECT_TRUE(outcomeOf(lists_.remove(u"丙"_s, {})));
    EXPECT_EQ(lists_.names(), QStringList{u"乙"_s});
    EXPECT_EQ(codes(u"丙"_s), QStringList());
    bringBack(*removals_.last(watchlistPlace));
    EXPECT_EQ(lists_.names(), QStringList({u"丙"_s, u"乙"_s}));
    EXPECT_EQ(codes(u"丙"_s), own);
}

// As an earlier program has left it.
TEST_F(WatchlistTest, AStoreWithoutTheFurtherTablesGetsThemWithTheFirstRow) {
    addAll();
    store_.run({u"drop table zixuanzu"_s, u"drop table zixuanzugu"_s, u"drop table zixuanshunxu"_s,
                u"drop table gegubeizhu"_s});
    store_.run(
        {u"insert into gegujiankong(dm,leixin,bijiaofu,baojinzhi) values"
         u"('SH600000','涨幅','>',5),('SH600000','股价','<',9.5)"_s});
    EXPECT_EQ(codes().size(), 3);
    EXPECT_EQ(lists_.names(), QStringList());
    EXPECT_EQ(column(WatchColumn::monitor),
              QStringList({QString(), u"涨幅>5，股价<9.5"_s, QString()}));
    const auto note = [this](const QString& text) {
        Connection store = store_.stores.main.open();
        writeNote(store, u"SH600519"_s, text);
    };
    note(u" 年报'前'再看 "_s);
    note(u"年报'前'再看；\n减持"_s);
    EXPECT_EQ(column(WatchColumn::note)[0], u"年报'前'再看；\n减持"_s);
    note(u" "_s);
    EXPECT_EQ(store_.rows(u"select * from gegubeizhu"_s), QStringList());
    move({u"SZ000001"_s}, u"SH600519"_s);
    EXPECT_EQ(codes()[0], u"SZ000001"_s);
}

TEST_F(WatchlistTest, WhatFailsLeavesNothingOfItself) {
    addAll();
    create(u"甲"_s);
    move({u"SZ000001"_s}, u"SH600519"_s);
    const QString everything =
        u"select dm,'' from zixuangu union all select zu,dm from zixuanzugu"
        u" union all select zu||dm,weizhi from zixuanshunxu"_s;
    const QStringList before = store_.rows(everything);
    const QStringList two = {u"SH600519"_s, u"SH600000"_s};
    const QList<std::function<void()>> operations = {
        [&] { lists_.transfer(two, {}, u"甲"_s, WatchLists::Way::move); },
        [&] { move({u"SH600000"_s}, u"SZ000001"_s); },
        [&] { watchlist_.removeAll(two, {}); },
    };
    store_.run(
        {u"create trigger t1 before delete on zixuangu when old.dm='SH600000' begin"
         u" select raise(abort,'no'); end"_s,
         u"create trigger t2 before insert on zixuanshunxu when new.weizhi=3 begin"
         u" select raise(abort,'no'); end"_s});
    for (const auto& operation : operations) {
        EXPECT_THROW(operation(), StoreError);
        EXPECT_EQ(store_.rows(everything), before);
    }
    EXPECT_FALSE(removals_.last(watchlistPlace)) << "nothing to take back";
}

}  // namespace guanchao
