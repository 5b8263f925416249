#include "exchange/store_backup.h"

#include "exchange/restore.h"
#include "exchange/store_check.h"
#include "tests/exchange/exchange_fixture.h"

namespace guanchao {

class StoreBackupTest : public ExchangeFixture {
protected:
    StoreBackupTest() { addTheme(u"白酒"_s); }

    void addTheme(const QString& name) { store_.addMember(name, u"SH600519"_s); }
    bool makeToday() {
        const QDate day = clock_.now().date();
        return makeDailyCopy(
            store_.stores, folder_, day, [this](const QString&) { return free_; },
            [&] { EXPECT_FALSE(names().contains(dailyCopyName(day))) << "it isn't whole yet"; });
    }
    ReadyStores prepare(const QString& copy, const QList<CopiedStore>& wanted = allCopied) {
        ExchangeWork work({}, {});
        return prepareRestore(store_.stores, folder_, {copy, wanted}, clock_.now(), work);
    }
    template <typename Step>
    static QString refusal(const Step& step) {
        return raisedBy<OperationError>(step).reason();
    }
    QStringList names() const {
        return QDir(folder_).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    }
    QStringList themes() { return store_.rows(u"select zhutiname from dzhzhuti order by rowid"_s); }
    Stores copied(const QString& copy) const {
        return storesOfCopy(store_.stores, folder_ + copy + u'/');
    }
    qint64 themesIn(const QString& copy) {
        return readCounts(CopiedStore::main, copied(copy).main)[0];
    }
    const QString folder_ = store_.folder() + u"备份/"_s;
    qint64 free_ = spareBytes * 2;
};

TEST_F(StoreBackupTest, AgeAndBytesTellWhichCopiesGo) {
    const QDate last(2026, 11, 25);  // a Wednesday
    const auto daily = [&](int daysBack, qint64 bytes = 1) {
        return KeptCopy{dailyCopyName(last.addDays(-daysBack)), last.addDays(-daysBack), false,
                        bytes};
    };
    QList<KeptCopy> year;
    for (int back = 0; back < 365; ++back) {
        year << daily(back);
    }
    const QStringList gone = textsOf(copiesToGo(year, 1000), &KeptCopy::name);
    QStringList kept = textsOf(year, &KeptCopy::name);
    kept.removeIf([&](const QString& name) { return gone.contains(name); });
    EXPECT_EQ(kept.join(u' ').remove(u"2026-"_s),
              u"11-25 11-24 11-23 11-22 11-21 11-20 11-19 11-15 11-08 11-01 10-25 10-18 10-11 "
              u"10-04 09-27"_s);
    EXPECT_EQ(gone.first(), year.last().name) << "the oldest goes first";
    const auto goneOf = [](const QList<KeptCopy>& copies, qint64 most) {
        return textsOf(copiesToGo(copies, most), &KeptCopy::name).join(u' ').remove(u"2026-11-"_s);
    };
    EXPECT_EQ(goneOf({daily(0, 50), daily(1, 40), daily(2, 40)}, 100), u"23"_s);
    EXPECT_EQ(goneOf({daily(0, 500), daily(1, 40)}, 100), u"24"_s) << "never the newest";
    QList<KeptCopy> restores;
    for (const int hour : {14, 13, 12, 11}) {
        const QDateTime at(last, QTime(hour, 0));
        restores << KeptCopy{beforeRestoreName(at), last, true, 60};
    }
    restores << daily(0, 50);
    EXPECT_EQ(goneOf(restores, 1000), u"25 11.00.00 恢复前"_s);
    EXPECT_EQ(goneOf(restores, 100), u"25 11.00.00 恢复前 25 12.00.00 恢复前 25 13.00.00 恢复前"_s);
}

TEST_F(StoreBackupTest, EachDayHasOneWholeCopyAndWhatIsInTheWayIsTold) {
    free_ = spareBytes;
    EXPECT_TRUE(begins(raisedBy<OperationError>([&] { makeToday(); }).forLog(),
                       u"磁盘空间不够：需要 256 MB，只有 "_s));
    EXPECT_EQ(names(), QStringList());
    free_ = spareBytes * 2;
    ASSERT_TRUE(QDir().mkpath(folder_ + u"2026-11-20.new"_s)) << "of a run that was killed";
    EXPECT_TRUE(keptCopies(folder_).isEmpty());
    EXPECT_TRUE(makeToday());
    addTheme(u"银行"_s);
    EXPECT_FALSE(makeToday());
    EXPECT_EQ(themesIn(u"2026-11-24"_s), 1) << "of the morning";
    EXPECT_EQ(QDir(folder_ + u"2026-11-24"_s).entryList(QDir::Files, QDir::Name),
              QStringList({u"caijiqi.mzdat"_s, u"dzhzhuti.mzdat"_s, u"wenzhang.mzdat"_s}));
    clock_.moment = clock_.moment.addDays(1);
    EXPECT_TRUE(makeToday());
    EXPECT_EQ(themesIn(u"2026-11-25"_s), 2);
    EXPECT_GT(keptCopies(folder_).first().bytes, 0);

    const qint64 page =
        store_.rows(u"select rootpage from sqlite_master where name='bankuaidmb'"_s)[0]
            .toLongLong();
    spoil(store_.stores.main.path, (page - 1) * 4096, 4096);
    clock_.moment = clock_.moment.addDays(1);
    EXPECT_THROW(makeToday(), StoreError) << "a page that no count reads is damaged";
    EXPECT_EQ(names(), QStringList({u"2026-11-24"_s, u"2026-11-25"_s}));
}

TEST_F(StoreBackupTest, OnlyTheChosenStoresAreTaken) {
    makeToday();
    store_.run({u"delete from dzhzhuti"_s});
    runArticle(u"insert into wenzhang(biaoti) values('新')"_s);
    spoil(copied(u"2026-11-24"_s).article.path, 0);
    const ReadyStores ready = prepare(u"2026-11-24"_s, {CopiedStore::main});
    runArticle(u"insert into wenzhang(biaoti) values('更新')"_s);
    takeTheirPlace(store_.stores, ready);
    EXPECT_EQ(themes(), QStringList{u"白酒"_s});
    EXPECT_EQ(articleRows(u"select biaoti from wenzhang"_s), QStringList({u"新"_s, u"更新"_s}));
    const QString before = u"2026-11-24 10.00.00 恢复前"_s;
    spoil(copied(before).main.path, 0);
    clock_.moment = clock_.moment.addSecs(60);
    takeTheirPlace(store_.stores, prepare(before, {CopiedStore::article}));
    EXPECT_EQ(articleRows(u"select biaoti from wenzhang"_s), QStringList{u"新"_s});
    EXPECT_EQ(themes(), QStringList{u"白酒"_s});
}

TEST_F(StoreBackupTest, WhatFailsLeavesTheStoresThatAreThere) {
    makeToday();
    const QString copy = folder_ + u"2026-11-24/"_s;
    addTheme(u"银行"_s);
    const ReadyStores ready = prepare(u"2026-11-24"_s);
    addTheme(u"新"_s);
    EXPECT_EQ(refusal([&] { takeTheirPlace(store_.stores, ready); }),
              u"数据在恢复的准备当中有改动，请再试一次。"_s);
    dropReady(ready);

    const QString main = copy + u"dzhzhuti.mzdat"_s;
    const struct {
        std::function<void()> spoil;
        CopiedStore store;
        QString words;
    } cases[] = {
        {[&] { rekey(copy + u"wenzhang.mzdat"_s, store_.stores.article.key, u"old"_s); },
         CopiedStore::article, u"文章库不能读取（已损坏，或者密码不对）"_s},
        {[&] { spoil(main, 4096); }, CopiedStore::main, u"主题库不能读取（已损坏）"_s},
        {[&] { QFile::resize(main, 0); }, CopiedStore::main, u"主题库不能读取（是空文件）"_s},
        {[&] { QFile::remove(main); }, CopiedStore::main, u"主题库不能读取（没有这个文件）"_s},
        {[&] { createStore(main, {}, u"create table other (a)"_s); }, CopiedStore::main,
         u"主题库不能读取（不是主题库）"_s},
    };
    for (const auto& it : cases) {
        it.spoil();
        EXPECT_EQ(refusal([&] { prepare(u"2026-11-24"_s, {it.store}); }),
                  u"备份 2026-11-24 的"_s + it.words + u"，请另选一份备份。"_s);
        const StoreContents found = contentsOf(allCopied, copied(u"2026-11-24"_s), Look::quick);
        EXPECT_TRUE(found[CopiedStore::heat].isReadable());
    }
    EXPECT_EQ(themes(), QStringList({u"白酒"_s, u"银行"_s, u"新"_s}));
    EXPECT_FALSE(names().join(u' ').remove(u"恢复前"_s).contains(u"恢复"_s)) << "none is left";
}

TEST_F(StoreBackupTest, StoresThatAreRuinedOrMissingDontStandInTheWay) {
    makeToday();
    writeFile(store_.stores.main.path, "ruined");
    QFile::remove(store_.stores.article.path);
    takeTheirPlace(store_.stores, prepare(u"2026-11-24"_s));
    EXPECT_EQ(themes(), QStringList{u"白酒"_s});
    EXPECT_EQ(articleRows(u"select count(*) from wenzhang"_s), QStringList{u"0"_s});
}

}  // namespace guanchao
