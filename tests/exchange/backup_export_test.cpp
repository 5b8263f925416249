#include "exchange/backup_export.h"

#include <sys/wait.h>
#include <unistd.h>

#include <QScopeGuard>
#include <csignal>

#include "exchange/store_copy.h"
#include "exchange/theme_import.h"
#include "tests/exchange/exchange_fixture.h"

namespace guanchao {

static const QStringList files = {u"caijiqi.ztb"_s, u"wenzhang.ztb"_s, u"zhutibackup.ztb"_s};

class BackupExportTest : public ExchangeFixture {
protected:
    void exportTo(const QString& folder) {
        dialogs_.typed = folder;
        endOf(export_.exportData({}));
    }
    void addTheme(const QString& name, const QString& dm) {
        execute(store_.stores.main,
                {u"insert into dzhzhuti values('%1','%2','','',5,1)"_s.arg(name, dm)});
    }

    QStringList exported() const { return QDir(exportFolder()).entryList(QDir::Files, QDir::Name); }

    BackupExport export_{store_.stores, dialogs_, run_};
};

TEST_F(BackupExportTest, TheFolderDecidesWhatHappens) {
    const QString question = u"导出数据|将导出数据到下列文件夹：|"_s + exportFolder();
    exportTo({});
    EXPECT_EQ(told(), QStringList({question, u"观潮台|已取消导出数据!"_s}));
    const QString other = store_.folder() + u"别处/"_s;
    for (const QString& missing : {other, other.chopped(1)}) {
        exportTo(missing);
        EXPECT_EQ(told(), QStringList({question, u"观潮台|请先建立备份文件夹:"_s + missing}));
        EXPECT_FALSE(QFileInfo::exists(missing)) << "only the default is made";
    }
    exportTo(exportFolder().chopped(1));
    EXPECT_EQ(exported(), files);
    for (const StoreFile& store : {store_.stores.article, store_.stores.heat}) {
        const QString copy = exportFolder() + QFileInfo(store.path).baseName() + u".ztb"_s;
        EXPECT_EQ(contentOf(copy), contentOf(store.path));
    }
    ASSERT_TRUE(QDir().mkdir(other.chopped(1)));
    exportTo(u"~/别处"_s);
    EXPECT_TRUE(QFileInfo::exists(other + u"zhutibackup.ztb"_s)) << "it is a folder all the same";
}

TEST_F(BackupExportTest, WhatGoesOutComesBackButForTheTimes) {
    execute(
        store_.stores.main,
        {u"insert into dzhzhuti values('白酒','SH600519','贵州茅台','2015-06-01 09:30:05',10,18)"_s,
         u"insert into dzhzhuti values(' 空格 ','sz000001','*ST\"引号\"','2015-06-01',1,20)"_s,
         u"insert into dzhzhuti values('𠮷野😀','','长',null,-3,99999999999)"_s,
         u"insert into dzhzhuti values('it''s','SH6''00','''',null,null,null)"_s,
         u"insert into dmb(dm,numdm,jc,shenmu,newdmtime,sp,totalsl) values('SH600519',"
         u"'600519','贵州茅台','gzmt','2010-01-01 08:00:00',1700.5,12)"_s});
    const QString columns = u"select zhutiname,dm,jc,xiangguandu,guanzhudu from dzhzhuti"_s;
    const QStringList themes = store_.rows(columns);
    exportTo(exportFolder());
    EXPECT_EQ(
        TestStores::rows(library(), u"select ztktime from dzhzhuti"_s),
        QStringList({u"2015-06-01 09:30:05"_s, u"2015-06-01 00:00:00"_s, QString(), QString()}));
    execute(store_.stores.main, {u"delete from dzhzhuti"_s, u"delete from dmb"_s});
    ThemeImport import(store_.stores, clock_, dialogs_, run_, removals_, edits_);
    endOf(import.importLibrary(library().path, {}));
    EXPECT_EQ(told().last(), u"观潮台|导入主题完成，共导入新的数据：4条"_s);
    EXPECT_EQ(store_.rows(columns).join(u'\n'), themes.join(u'\n').replace(u"sz"_s, u"SZ"_s));
    EXPECT_EQ(store_.rows(u"select dm,numdm,jc,shenmu,newdmtime,sp,totalsl from dmb"_s),
              QStringList{u"SH600519|600519|贵州茅台|gzmt|2026-11-24 10:00:00|0|0"_s});
}

TEST_F(BackupExportTest, ARowThatTheLibraryRefusesIsNamed) {
    addTheme(u"好"_s, u"SH600000"_s);
    exportTo(exportFolder());
    execute({store_.stores.backupTemplate.path, store_.stores.backupKey},
            {u"create trigger full before insert on dzhzhuti when new.zhutiname='坏'"
             u" begin select raise(abort,''); end"_s});
    addTheme(u"坏"_s, u"SH600001"_s);
    const auto failure = raisedBy<StoreError>([this] { exportTo(exportFolder()); });
    EXPECT_TRUE(
        failure.reason().startsWith(u"表 dzhzhuti 的一行（主题“坏”，代码“SH600001”）不能写入："_s));
    EXPECT_EQ(exported(), files) << "nothing is left beside them";
    EXPECT_FALSE(run_.running());
}

TEST_F(BackupExportTest, WhatCannotBeWrittenIsTold) {
    ASSERT_TRUE(QDir(store_.folder()).mkpath(u"导出主题/wenzhang.ztb/占用"_s));
    EXPECT_THROW(exportTo(exportFolder()), OperationError) << "a folder stands at the target";
    EXPECT_EQ(exported(), QStringList{u"zhutibackup.ztb"_s}) << "no half copy is left";
    QFile::remove(store_.stores.backupTemplate.path);
    EXPECT_THROW(exportTo(exportFolder()), OperationError) << "no template";
    QDir(exportFolder()).removeRecursively();
    writeFile(exportFolder().chopped(1));
    told();
    exportTo(u"~/导出主题"_s);
    EXPECT_EQ(told().last(), u"观潮台|这是一个文件，请另选一个文件夹:~/导出主题"_s);
}

TEST_F(BackupExportTest, AStoppedRunLeavesWhatWasThere) {
    exportTo(exportFolder());
    const QByteArray former = contentOf(library().path);
    addTheme(u"好"_s, u"SH600000"_s);
    told();
    for (const bool byUser : {true, false}) {
        Connection other = held(store_.stores.main);
        runs_.start([this](std::stop_token stop) { return export_.exportData(stop); });
        ASSERT_TRUE(QTest::qWaitFor([this] { return exported().size() > files.size(); }));
        EXPECT_THROW(exportTo(exportFolder()), OperationError) << "one run at a time";
        byUser ? run_.stop() : runs_.stop();
        other.execute(u"rollback"_s);
        ASSERT_TRUE(allEnded());
        EXPECT_EQ(told().sliced(2).join(u'/'),
                  byUser ? u"观潮台|导出已停止，没有写完的备份文件没有换掉原来的。"_s : QString());
        EXPECT_EQ(contentOf(library().path), former);
        EXPECT_EQ(exported(), files);
        EXPECT_FALSE(seen_.last().running);
    }
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
    const pid_t writer = fork();
    if (writer == 0) {
        const QString update = u"update shopname set aboutgegu='%1' where shopname='%2'"_s;
        for (int commits = 1;; ++commits) {
            const QString number = QString::number(commits);
            execute(heat, {update.arg(number, u"甲"_s), update.arg(number, u"乙"_s)});
        }
    }
    const auto end = qScopeGuard([&] {
        kill(writer, SIGKILL);
        waitpid(writer, nullptr, 0);
    });
    const StoreFile copy{store_.folder() + u"copy.ztb"_s, heat.key};
    for (QSet<QString> seen; seen.size() < 10;) {
        copyStore(heat, copy.path, [] {});
        const QStringList numbers = TestStores::rows(
            copy, u"select distinct aboutgegu from shopname where shopname!='长'"_s);
        ASSERT_EQ(numbers.size(), 1);
        seen << numbers[0];
    }
}

}  // namespace guanchao
