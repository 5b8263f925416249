#include "exchange/earlier_folder.h"

#include <QDirIterator>
#include <QTemporaryDir>

#include "exchange/user_files.h"
#include "platform/process_lock.h"
#include "store/prepared_stores.h"
#include "tests/support/store_test.h"

namespace guanchao {

// The kept folder of an earlier program, copied to a place of its own.
class EarlierFolderTest : public StoreTest {
protected:
    EarlierFolderTest() {
        const QString source =
            QStringLiteral(GUANCHAO_SOURCE_DIR "/tests/kept_folder/v3.7/application/");
        const auto files = filesIn(source);
        for (auto it = files.begin(); it != files.end(); ++it) {
            writeFile(there_ + it.key(), it.value());
        }
        store_.addMember(u"自己的"_s, u"SH600519"_s);
    }

    EarlierFolder look() const { return lookIntoFolder(store_.stores, store_.folder(), there_); }
    Connection main() const { return Connection(there_ + u"dzhzhuti.mzdat"_s, {}); }
    // Their contents by their paths below it.
    static QMap<QString, QByteArray> filesIn(const QString& folder) {
        QMap<QString, QByteArray> files;
        QDirIterator file(folder, QDir::Files, QDirIterator::Subdirectories);
        while (file.hasNext()) {
            const QString path = file.next();
            files[path.mid(folder.size())] = contentOf(path);
        }
        return files;
    }

    QTemporaryDir place_;
    QString there_ = place_.path() + u'/';
};

TEST_F(EarlierFolderTest, ItsStoresTakeThePlaceOfThoseHereAndItsSettingsComeToo) {
    const EarlierFolder folder = look();
    EXPECT_EQ(folder.refusal, QString());
    EXPECT_EQ(folder.age, u"主题库是较早的版本建的，缺的表用到时自动建立。"_s);
    EXPECT_EQ(folder.choice().stores, allCopied);
    const QString question =
        takeOverQuestion(folder, contentsOf(allCopied, store_.stores, Look::quick));
    for (const QString& told :
         {u"主题库\n现在有：1 个主题，1 条，0 只股票，0 个监控\n那里有："_s, u"，自选股 "_s,
          u"行情来源的设置（services.ini）"_s, u"自选股的文件 1 个。"_s}) {
        EXPECT_TRUE(holds(question, told));
    }

    writeFile(store_.folder() + u"services.ini"_s, "[quote]\nhost=http://mine\n");
    writeFile(there_ + u"草稿/一.json"_s, "{}");
    const auto before = filesIn(there_);
    const QString copies = copiesFolder(store_.folder());
    ExchangeWork work({}, {});
    const ReadyStores ready =
        prepareRestore(store_.stores, copies, folder.choice(), clock_.now(), work);
    takeTheirPlace(store_.stores, ready);
    EXPECT_EQ(contentsOf(allCopied, store_.stores, Look::whole)[CopiedStore::main].counts,
              folder.contents[CopiedStore::main].counts);
    EXPECT_EQ(bringUserFiles(there_, store_.folder(), ready.kept),
              QStringList({u"services.ini"_s, u"caijiqi.ini"_s,
                           u"自选股/自选业绩预告2026-11-24.txt"_s, u"草稿/一.json"_s}));
    EXPECT_EQ(bringUserFiles(there_, store_.folder(), ready.kept), QStringList())
        << "they are here";
    EXPECT_EQ(contentOf(store_.folder() + u"services.ini"_s),
              contentOf(there_ + u"services.ini"_s));
    EXPECT_EQ(filesIn(there_), before) << "nothing there is touched";

    const QString kept = copies + u"2026-11-24 10.00.00 恢复前/"_s;
    EXPECT_EQ(contentOf(kept + u"services.ini"_s), "[quote]\nhost=http://mine\n");
    EXPECT_EQ(TestStores::rows(storesOfCopy(store_.stores, kept).main,
                               u"select zhutiname from dzhzhuti"_s),
              QStringList{u"自己的"_s});
}

TEST_F(EarlierFolderTest, WhatCantBeTakenOverIsRefusedWithItsReason) {
    const Impatience impatience;
    Connection other = store_.stores.article.open();
    ProcessLock running(there_ + u"guanchaotai.lock"_s);
    const QByteArray store = contentOf(there_ + u"dzhzhuti.mzdat"_s);
    const QString ini = there_ + u"services.ini"_s;
    const std::tuple<std::function<void()>, std::function<void()>, QString> cases[] = {
        {[&] { running.take(); }, [&] { QFile::remove(running.path()); },
         u"观潮台正在运行，请先退出它"_s},
        {[&] { writeFile(ini, "[practice]\n"); }, [&] { QFile::remove(ini); }, u"练习用的文件夹"_s},
        {[&] { main().execute(u"drop table zixuangu"_s); }, [] {}, u"缺少表 zixuangu，"_s},
        {[&] { writeFile(there_ + u"dzhzhuti.mzdat"_s, "ruined"); }, [] {},
         u"主题库不能读取（已损坏）"_s},
        {[&] { QFile::remove(there_ + u"dzhzhuti.mzdat"_s); }, [] {},
         u"这个文件夹里没有 dzhzhuti.mzdat"_s},
        {[&] { other.execute(u"begin immediate"_s); }, [&] { other.execute(u"rollback"_s); },
         u"现在的文章库正被其他程序占用"_s},
    };
    for (const auto& [spoil, mend, words] : cases) {
        spoil();
        EXPECT_TRUE(holds(look().refusal, words));
        mend();
        writeFile(there_ + u"dzhzhuti.mzdat"_s, store);
    }
    EXPECT_EQ(look().refusal, QString());
    EXPECT_EQ(lookIntoFolder(store_.stores, store_.folder(), store_.folder().chopped(1)).refusal,
              u"这就是现在用的文件夹，不用接管。"_s);
}

// What is only reckoned or marked isn't told; a new table has to be thought of.
TEST_F(EarlierFolderTest, WhateverTheUserHasInAStoreIsToldOf) {
    const QStringList untold = {u"tempcanshu"_s,   u"canshu"_s,       u"tuishi"_s,
                                u"jiankonghq"_s,   u"zixuanshunxu"_s, u"geguhq"_s,
                                u"zhutidapanhq"_s, u"bankuaidmb"_s,   u"xuanticaigu"_s};
    const std::pair<CopiedStore, Schema> stores[] = {{CopiedStore::main, Schema::main},
                                                     {CopiedStore::article, Schema::article},
                                                     {CopiedStore::heat, Schema::heat}};
    for (const auto& [store, schema] : stores) {
        const StoreFile& file = fileOf(store_.stores, store);
        const auto words = [&, it = store] { return contentOf(it, file, Look::quick).words(it); };
        for (const QString& table : tablesOf(schema)) {
            const QString before = words();
            const QStringList columns =
                TestStores::rows(file, u"pragma table_info("_s + table + u')');
            const QStringList values(columns.size(), u"1"_s);
            file.open().execute(u"insert into %1 values(%2)"_s.arg(table, values.join(u',')));
            EXPECT_EQ(words() == before, untold.contains(table))
                << table.toStdString() << words().toStdString();
        }
    }
}

TEST_F(EarlierFolderTest, ANewerOneComesAsItIsAndAStoreThatIsRuinedStaysAway) {
    main().execute(u"create table xinbiao (a)"_s);
    writeFile(there_ + u"wenzhang.mzdat"_s, "ruined");
    QFile::remove(there_ + u"caijiqi.mzdat"_s);
    const EarlierFolder folder = look();
    EXPECT_EQ(folder.refusal, QString());
    EXPECT_TRUE(folder.age.contains(u"不认识的表（xinbiao），可能来自更新的版本"_s));
    const QString question =
        takeOverQuestion(folder, contentsOf(allCopied, store_.stores, Look::quick));
    EXPECT_TRUE(question.contains(u"文章库（不换）\n现在有：0 篇文章\n那里有：不能读取"_s));
    EXPECT_TRUE(question.contains(u"采集库（不换）"_s) && question.contains(u"没有这个库"_s));
}

}  // namespace guanchao
