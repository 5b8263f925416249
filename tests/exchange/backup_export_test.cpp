#include "exchange/backup_export.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFileInfo>
#include <QProcess>
#include <QScopeGuard>
#include <array>
#include <csignal>
#include <cstdio>

#include "exchange/article_import.h"
#include "exchange/news_import.h"
#include "exchange/store_copy.h"
#include "exchange/theme_import.h"
#include "store/failure.h"
#include "store/prepared_stores.h"
#include "store/sqlite.h"
#include "store/store_error.h"
#include "tests/exchange/exchange_fixture.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString themesOrdered =
    u"select zhutiname,dm,jc,ztktime,xiangguandu,guanzhudu from dzhzhuti order by rowid"_s;

const QStringList files = {u"caijiqi.ztb"_s, u"wenzhang.ztb"_s, u"zhutibackup.ztb"_s};

}  // namespace

class BackupExportTest : public ExchangeFixture {
protected:
    void exportTo(const QString& folder) {
        dialogs_.typed = folder;
        export_.exportData();
    }

    QStringList exported() const { return QDir(exportFolder()).entryList(QDir::Files, QDir::Name); }
    QByteArray libraryBytes() const {
        QFile file(library().path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    BackupExport export_{store_.stores, dialogs_, run_};
    ThemeImport import_{store_.stores, globals_, clock_, dialogs_, run_};
    ArticleImport articles_{store_.stores, dialogs_, run_};
    NewsImport news_{store_.stores, dialogs_, run_};
};

TEST_F(BackupExportTest, TheFolderDecidesWhatHappens) {
    const QString question = u"导出数据|将导出数据到下列文件夹：|"_s + exportFolder();
    exportTo({});
    EXPECT_EQ(told(), QStringList({question, u"观潮台|已取消导出数据!"_s}));
    const QString other = store_.folder() + u"别处/"_s;
    for (const QString& missing : {other, exportFolder().chopped(1)}) {
        exportTo(missing);
        EXPECT_EQ(told(), QStringList({question, u"观潮台|请先建立备份文件夹:"_s + missing}));
        EXPECT_FALSE(QFileInfo::exists(missing)) << "only the default is made";
    }
    for (int time = 0; time < 2; ++time) {
        exportTo(exportFolder());
        EXPECT_EQ(told(),
                  QStringList({question, u"观潮台|已导出数据到："_s + exportFolder() +
                                             u"。 主题库：zhutibackup.ztb；文章库：wenzhang.ztb；"
                                             u"主题新闻数量库：caijiqi.ztb"_s}));
        EXPECT_EQ(exported(), files);
        EXPECT_FALSE(seen_.last().running);
    }
    ASSERT_TRUE(QDir().mkdir(other.chopped(1)));
    exportTo(other.chopped(1));
    EXPECT_TRUE(QFileInfo::exists(other.chopped(1) + u"zhutibackup.ztb"_s))
        << "without its separator the folder's name begins the file's";
    EXPECT_EQ(QDir(other).entryList(QDir::Files, QDir::Name),
              QStringList({u"caijiqi.ztb"_s, u"wenzhang.ztb"_s}));
}

// Every column filled, texts of all kinds, empty tables, and memberships by the thousand: what
// comes back differs in the times only, and the columns that no library holds are at their
// defaults.
TEST_F(BackupExportTest, WhatGoesOutComesBack) {
    QStringList rows = {
        u"insert into dzhzhuti values('白酒','SH600519','贵州茅台','2015-06-01 09:30:05',10,18)"_s,
        u"insert into dzhzhuti values(' 首尾有空格 ','sz000001','*ST\"引号\"','2015-06-01',1,20)"_s,
        u"insert into dzhzhuti values('𠮷野😀','SH600000','长%1','2016-01-01 00:00:00',5,0)"_s.arg(
            QString(3000, u'文')),
        u"insert into dzhzhuti values('空','','',null,-3,99999999999)"_s,
        u"insert into dmb(dm,numdm,jc,shenmu,newdmtime,sp,zhangfu,totalsl,temp) values('SH600519',"
        u"'600519','贵州茅台','gzmt','2010-01-01 08:00:00',1700.5,1.25,12,1)"_s,
        u"insert into dmb(dm,numdm,jc,shenmu,newdmtime) values('SH000001','000001','上证','sz','')"_s,
    };
    for (int at = 0; at < 40000; ++at) {
        rows << u"insert into dzhzhuti values('主题%1','SZ%2','股','2014-02-03 04:05:06',%3,%4)"_s
                    .arg(at % 600)
                    .arg(at, 6, 10, QChar(u'0'))
                    .arg(at % 10 + 1)
                    .arg(at % 20 + 1);
    }
    execute(store_.stores.main, rows);
    const QStringList themes =
        store_.rows(u"select zhutiname,dm,jc,xiangguandu,guanzhudu from dzhzhuti order by rowid"_s);
    exportTo(exportFolder());
    EXPECT_EQ(TestStores::rows(library(), u"select ztktime from dzhzhuti limit 4"_s),
              QStringList({u"2015-06-01 09:30:05"_s, u"2015-06-01 00:00:00"_s,
                           u"2016-01-01 00:00:00"_s, QString()}))
        << "the library keeps the times in their normal form";
    execute(store_.stores.main, {u"delete from dzhzhuti"_s, u"delete from dmb"_s});
    told();
    import_.importLibrary(library().path);
    EXPECT_EQ(told(), QStringList{u"观潮台|导入主题完成，共导入新的数据：40004条"_s});
    EXPECT_EQ(
        store_.rows(u"select zhutiname,dm,jc,xiangguandu,guanzhudu from dzhzhuti order by rowid"_s),
        themes);
    EXPECT_EQ(store_.rows(u"select distinct ztktime from dzhzhuti"_s),
              QStringList{u"2026-11-24 10:00:00"_s});
    EXPECT_EQ(
        store_.rows(u"select * from dmb order by rowid"_s),
        QStringList({u"SH600519|600519|贵州茅台|gzmt|2026-11-24 10:00:00|0|0|0|0|0|0|0|0|"
                     u"null|0"_s,
                     u"SH000001|000001|上证|sz|2026-11-24 10:00:00|0|0|0|0|0|0|0|0|null|0"_s}));
    for (const StoreFile& store : {store_.stores.article, store_.stores.heat}) {
        const QString copy = QFileInfo(store.path).baseName() + u".ztb"_s;
        QFile file(store.path);
        QFile exported(exportFolder() + copy);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly) && exported.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), exported.readAll()) << copy.toStdString();
    }
}

// Articles come back without their ids and counts, moments of the heat store as the day alone.
TEST_F(BackupExportTest, ArticlesAndHeatComeBackFromTheirCopies) {
    const StoreFile& article = store_.stores.article;
    const StoreFile& heat = store_.stores.heat;
    const QString longText = QString(20, u'文') + u"\r\n\"引号\" \t😀\n"_s;
    execute(article,
            {u"insert into wenzhang values(7,'2016-04-01','甲','主题','白酒','一','%1',3)"_s.arg(
                 longText),
             u"insert into wenzhang values(9,'2016-04-01 09:30:05','','个股','SH600519贵州茅台',"
             u"' 二 ',' ',0)"_s,
             u"insert into wenzhang values(11,null,null,'','','三',null,1)"_s,
             u"insert into wenzhang values(13,'2016-04-01','甲','主题','白酒','','没有题目',1)"_s});
    execute(heat,
            {u"insert into xinwenshul values('2016-04-01 09:30:05','白酒',1,-2.5,3,1000,5,6,7,1)"_s,
             u"insert into shophq values('铜','2016-04-01',1,2,3,4,5,6,7,8,-9,10.25)"_s,
             u"insert into shopname values('铜',3,'江西铜业 \"云铜\"','2015-01-02 03:04:05',"
             u"'2016-04-01',1,2,3,4,5,6,7,8,-9,10.25)"_s});
    const QString articleRows =
        u"select datetime(rq),coalesce(zuozhe,''),dalei,xiaolei,biaoti,coalesce(leirong,'')"
        u" from wenzhang where biaoti!='' order by biaoti"_s;
    const QString newsRows =
        u"select date(riqi),zhutiname,onecishu,onezhangfu,allcishu,allzhangfu,zdycishu,zdyzhangfu,"
        u"zdytianshu,yixiaza from xinwenshul"_s;
    const auto state = [&] {
        return TestStores::rows(article, articleRows) + TestStores::rows(heat, newsRows) +
               TestStores::rows(heat,
                                u"select shopname,datetime(riqi),zhangzi,dazhang,baozhang,shengzi,"
                                u"diezi,dadie,baodie,jiangzi,zongfen,zhangfu from shophq"_s) +
               TestStores::rows(heat,
                                u"select shopname,guanzhudu,aboutgegu,datetime(adddate),"
                                u"datetime(riqi),zhangzi,zongfen,zhangfu from shopname"_s);
    };
    const QStringList before = state();
    exportTo(exportFolder());
    execute(article, {u"delete from wenzhang"_s});
    execute(heat,
            {u"delete from xinwenshul"_s, u"delete from shophq"_s, u"delete from shopname"_s});
    dialogs_.picked = exportFolder() + u"wenzhang.ztb"_s;
    articles_.importArticles();
    EXPECT_EQ(told().last(), u"观潮台|导入文章完成，共导入新的文章：3篇"_s);
    dialogs_.picked = exportFolder() + u"caijiqi.ztb"_s;
    news_.importNews();
    EXPECT_EQ(told().last(), u"观潮台|导入主题新闻数量完成，共导入新的记录：3条"_s);
    EXPECT_EQ(state(), before);
}

TEST_F(BackupExportTest, AFailureIsRaisedAndLeavesTheFormerLibrary) {
    execute(store_.stores.main, {u"insert into dzhzhuti values('好','SH600000','','',5,1)"_s});
    const QString bad[] = {
        u"insert into dzhzhuti values('坏''','SH600001','','',5,1)"_s,
        u"insert into dzhzhuti values('坏','SH600001','','',null,1)"_s,
        u"insert into dzhzhuti values('坏','SH600001','','',5,null)"_s,
        u"insert into dmb(dm,jc) values('SH600001','坏''')"_s,
    };
    exportTo(exportFolder());
    const QByteArray former = libraryBytes();
    for (const QString& row : bad) {
        execute(store_.stores.main, {row});
        try {
            exportTo(exportFolder());
            ADD_FAILURE() << row.toStdString();
        } catch (const StoreError& failure) {
            EXPECT_FALSE(failureText(failure).contains(u"找不到"_s));
        }
        EXPECT_EQ(libraryBytes(), former);
        EXPECT_EQ(exported(), files) << "nothing is left beside them";
        execute(store_.stores.main, {u"delete from dzhzhuti where dm='SH600001'"_s,
                                     u"delete from dmb where dm='SH600001'"_s});
        EXPECT_FALSE(run_.running());
    }
    exportTo(exportFolder());
    EXPECT_EQ(TestStores::rows(library(), themesOrdered), QStringList{u"好|SH600000|||5|1"_s});
}

TEST_F(BackupExportTest, WhatCannotBeWrittenIsToldAndTheStoresStay) {
    const QString path = store_.folder();
    ASSERT_TRUE(QDir(path).mkpath(u"导出主题/wenzhang.ztb/占用"_s));
    EXPECT_THROW(exportTo(exportFolder()), OperationError) << "a folder stands at the target";
    EXPECT_EQ(exported(), QStringList{u"zhutibackup.ztb"_s}) << "no half copy is left";
    QFile::rename(store_.stores.article.path, path + u"weg"_s);
    EXPECT_THROW(exportTo(exportFolder()), StoreError) << "no article store";
    QFile::rename(path + u"weg"_s, store_.stores.article.path);
    QFile::remove(store_.stores.backupTemplate.path);
    EXPECT_THROW(exportTo(exportFolder()), OperationError) << "no template";
    QDir(exportFolder()).removeRecursively();
    QFile file(path + u"导出主题"_s);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_THROW(exportTo(exportFolder()), OperationError) << "the folder can't be made";
}

// A limit on the size of files stands in for a disk that is full.
TEST_F(BackupExportTest, AFullDiskEndsTheExportAndKeepsTheOlderCopy) {
    exportTo(exportFolder());
    execute(
        store_.stores.article,
        {u"insert into wenzhang(biaoti,leirong) values('长','%1')"_s.arg(QString(300000, u'文'))});
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{200000, old.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const auto restore = qScopeGuard([&] { setrlimit(RLIMIT_FSIZE, &old); });
    EXPECT_THROW(exportTo(exportFolder()), OperationError);
    const StoreFile copy{exportFolder() + u"wenzhang.ztb"_s, store_.stores.article.key};
    EXPECT_EQ(TestStores::rows(copy, u"select count(*) from wenzhang"_s), QStringList{u"0"_s});
    EXPECT_FALSE(QFileInfo::exists(copy.path + u".new"_s));
}

// What an interrupted export left as its journal must not be played back into the next library.
TEST_F(BackupExportTest, AJournalOfAnEarlierExportIsTakenAway) {
    execute(store_.stores.main, {u"insert into dzhzhuti values('好','SH600000','','',5,1)"_s});
    exportTo(exportFolder());
    Connection open = library().open();
    Transaction transaction(open);
    open.execute(u"pragma cache_size=1"_s);
    open.execute(u"update dzhzhuti set zhutiname='%1'"_s.arg(QString(20000, u'长')));
    ASSERT_TRUE(QFile::copy(library().path + u"-journal"_s, store_.folder() + u"journal"_s));
    transaction.commit();
    exportTo(exportFolder());
    ASSERT_TRUE(QFile::copy(store_.folder() + u"journal"_s, library().path + u"-journal"_s));
    exportTo(exportFolder());
    EXPECT_EQ(TestStores::rows(library(), themesOrdered), QStringList{u"好|SH600000|||5|1"_s});
}

// Without its journal an older file that an interruption left half written would be lost for good.
TEST_F(BackupExportTest, ACopyThatCannotTakeItsPlaceLeavesTheJournal) {
    const QString target = store_.folder() + u"mubiao"_s;
    ASSERT_TRUE(QDir().mkpath(target + u"/zhanyong"_s));
    QFile journal(target + u"-journal"_s);
    ASSERT_TRUE(journal.open(QIODevice::WriteOnly) && journal.write("journal") == 7);
    journal.close();
    EXPECT_THROW(copyStore(store_.stores.article, target), OperationError);
    ASSERT_TRUE(journal.open(QIODevice::ReadOnly));
    EXPECT_EQ(journal.readAll(), "journal");
    EXPECT_EQ(QDir(store_.folder()).entryList({u"mubiao*"_s}, QDir::AllEntries, QDir::Name),
              QStringList({u"mubiao"_s, u"mubiao-journal"_s}));
}

TEST_F(BackupExportTest, AWindowThatClosesEndsTheRunWithoutAWord) {
    execute(store_.stores.main, {u"insert into dzhzhuti values('好','SH600000','','',5,1)"_s});
    pump_.onRun = [this] {
        EXPECT_TRUE(run_.running());
        EXPECT_THROW(import_.deleteAll(), OperationError) << "one run at a time";
        run_.cancel();
    };
    exportTo(exportFolder());
    EXPECT_EQ(told().size(), 1) << "only the input box";
    EXPECT_EQ(exported(), QStringList());
    EXPECT_EQ(seen_.value(1).total, 1);
    EXPECT_FALSE(run_.running());
}

// Killed in the middle of its rows, in a process of its own.
TEST_F(BackupExportTest, AKilledExportLeavesTheFormerLibraryAndNothingInTheNextOnesWay) {
    execute(store_.stores.main, {u"insert into dzhzhuti values('好','SH600000','','',5,1)"_s});
    exportTo(exportFolder());
    const QByteArray former = libraryBytes();
    execute(store_.stores.main,
            QStringList(5000, u"insert into dzhzhuti values('新','SH600001','','',5,1)"_s));
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const pid_t child = fork();
    if (child == 0) {
        pump_.onRun = [&] {
            if (pump_.runs == 40 && write(ends[1], ".", 1) == 1) {
                pause();
            }
        };
        try {
            exportTo(exportFolder());
        } catch (const std::exception& failure) {
            std::fputs(failure.what(), stderr);
        }
        _exit(1);
    }
    close(ends[1]);
    char byte = 0;
    EXPECT_EQ(read(ends[0], &byte, 1), 1) << "it came to its end";
    close(ends[0]);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_GT(exported().size(), files.size()) << "what it was writing is left";
    EXPECT_EQ(libraryBytes(), former);
    exportTo(exportFolder());
    EXPECT_EQ(exported(), files);
    EXPECT_EQ(TestStores::rows(library(), u"select zhutiname,count(*) from dzhzhuti group by 1"_s),
              QStringList({u"好|1"_s, u"新|5000"_s}));
}

// The first and the last row of a long file, which another process changes together over and over:
// they agree in each copy.
TEST_F(BackupExportTest, CopiesHoldNoHalfWrites) {
    const StoreFile& heat = store_.stores.heat;
    const QString row = u"insert into shopname(shopname,aboutgegu) values('%1','%2')"_s;
    QStringList rows(5000, row.arg(u"长"_s, QString(500, u'长')));
    rows.prepend(row.arg(u"甲"_s, u"0"_s));
    rows.append(row.arg(u"乙"_s, u"0"_s));
    execute(heat, rows);
    QProcess writer;
    writer.start(QStringLiteral(GUANCHAO_WRITE_LOOP), {store_.folder()});
    const auto end = qScopeGuard([&] {
        writer.kill();
        writer.waitForFinished();
    });
    const StoreFile copy{store_.folder() + u"copy.ztb"_s, heat.key};
    for (qsizetype commits = 0; commits < 25;) {
        ASSERT_TRUE(writer.waitForReadyRead()) << writer.errorString().toStdString();
        commits += writer.readAll().size();
        copyStore(heat, copy.path);
        EXPECT_EQ(TestStores::rows(copy,
                                   u"select count(distinct aboutgegu) from shopname where"
                                   u" shopname!='长'"_s),
                  QStringList{u"1"_s});
    }
}

}  // namespace guanchao
