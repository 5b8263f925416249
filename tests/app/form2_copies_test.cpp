#include "base/worker.h"
#include "exchange/form_restore.h"
#include "tests/app/form2_fixture.h"

namespace guanchao {

TEST_F(Form2Test, EachDayHasItsCopyWhichTheMenuTakesBack) {
    const QDir copies(store_.folder() + u"备份"_s);
    load();
    const auto comes = [&](const QString& day) {
        timer(u"dailyBackup"_s)->setInterval(2);
        return QTest::qWaitFor([&] { return copies.exists(day); });
    };
    ASSERT_TRUE(comes(u"2026-11-24"_s));
    clock_.moment = clock_.moment.addDays(1);
    store_.run({u"delete from dzhzhuti where zhutiname='银行'"_s});
    ASSERT_TRUE(comes(u"2026-11-25"_s)) << "past midnight";
    trigger(u"刷新"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).rows(), 2);

    ASSERT_TRUE(QFile::resize(copies.filePath(u"2026-11-24/wenzhang.mzdat"_s), 0));
    trigger(u"恢复"_s);
    QWidget* window = shownWindow<FormRestore>();
    GridView& list = *child<GridView>(window, u"copies"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return gridOf(list).rows() == 3; }));
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(child<QLabel>(window, u"unreadable"_s)->text(), u"文章库不能读取（是空文件）"_s);
    EXPECT_FALSE(child<QCheckBox>(window, u"articleStore"_s)->isEnabled());
    child<QPushButton>(window, u"restore"_s)->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return grid(u"MSHFlexGrid1"_s).rows() == 3; }));
    EXPECT_TRUE(dialogs_.shown[0].contains(u"备份里有：2 个主题，2 条"_s));
    EXPECT_TRUE(dialogs_.shown[1].startsWith(u"观潮台|已恢复备份 2026-11-24"_s));
    EXPECT_FALSE(shownWindow<FormRestore>());
    EXPECT_EQ(globals_.hqmang, 0);

    ASSERT_TRUE(QDir(copies).rename(u"2026-11-25"_s, u"恢复中"_s)) << "by a run that is killed";
    main_.Form_Load();
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).rows(), 2);

    processes_.running = QStringList{u"caijiqi.exe"_s};
    trigger(u"恢复"_s);
    emit shownWindow<FormRestore>()->agreed({u"2026-11-24"_s, {CopiedStore::main}});
    EXPECT_EQ(dialogs_.shown.last(), u"观潮台|采集程序正在运行，请等它结束后再试。"_s);
    EXPECT_EQ(failures_.texts, QStringList());
}

TEST_F(Form2Test, ACopyThatFailsIsTriedAgainAfterAnHour) {
    const QString copies = store_.folder() + u"备份"_s;
    writeFile(copies);
    load();
    const auto look = [this] {
        timer(u"dailyBackup"_s)->setInterval(2);
        ASSERT_TRUE(QTest::qWaitFor([this] { return timer(u"dailyBackup"_s)->interval() > 2; }));
        QCoro::waitFor(workersEnded({}));
        QApplication::processEvents();
    };
    look();
    EXPECT_TRUE(label(u"copyLine"_s).startsWith(u"今天还没有备份："_s));
    QFile::remove(copies);
    for (const int minutes : {59, 1}) {
        clock_.moment = clock_.moment.addSecs(qint64(minutes) * 60);
        look();
        EXPECT_EQ(QFileInfo(copies).isDir(), minutes == 1);
    }
    EXPECT_EQ(label(u"copyLine"_s), QString());
}

TEST_F(Form2Test, AnExchangeShowsItsProgressAndEndsByEscOrWithTheProgram) {
    load();
    activate();
    const StoreFile file{store_.folder() + u"file.ztb"_s, stores_.heat.key};
    ASSERT_TRUE(QFile::copy(stores_.heat.path, file.path));
    file.open().execute(u"insert into xinwenshul(riqi,zhutiname) values('2026-11-23','白酒')"_s);
    dialogs_.picked = file.path;
    auto* progress = find<QProgressBar>(u"exchangeProgress"_s);
    for (const bool byEsc : {true, false}) {
        Connection collector = held(stores_.heat, u"immediate"_s);
        trigger(u"导入新闻和商品"_s);
        EXPECT_TRUE(progress->isVisible());
        EXPECT_EQ(label(u"exchangeName"_s), u"正在导入新闻和商品…"_s);
        for (const QString& entry : {u"导出数据"_s, u"导入文章"_s, u"导入新闻和商品"_s}) {
            EXPECT_FALSE(find<QAction>(entry)->isEnabled());
        }
        if (byEsc) {
            QTest::keyClick(&main_, Qt::Key_Escape);
        } else {
            trigger(u"tuopanexit"_s);
            EXPECT_TRUE(processes_.ended.isEmpty()) << "the worker still uses the heat store";
        }
        collector.execute(u"rollback"_s);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return byEsc ? !progress->isVisible() : !processes_.ended.isEmpty(); }));
        EXPECT_EQ(heatRows(u"select count(*) from xinwenshul"_s), QStringList{u"0"_s});
        EXPECT_TRUE(find<QAction>(u"导入文章"_s)->isEnabled());
    }
    EXPECT_EQ(dialogs_.shown.size(), 3) << "two file dialogs and one stop";
    EXPECT_EQ(dialogs_.shown[1], u"观潮台|导入已停止，已导入完的一类保留，其余没有导入。"_s);
    EXPECT_EQ(processes_.ended, QStringList({u"guanchaotai.exe"_s, u"this"_s}));
    EXPECT_EQ(heatRows(u"select mainisrun from canshu"_s), QStringList{u"0"_s});
}

}  // namespace guanchao
