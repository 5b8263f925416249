#include "base/worker.h"
#include "exchange/form_restore.h"
#include "tests/app/form2_fixture.h"

namespace guanchao {

TEST_F(Form2Test, DeletedThemesComeBackTheLastFirst) {
    load();
    for (const QString& theme : {u"银行"_s, u"白酒"_s}) {
        globals_.dangqianzhuti = theme;
        trigger(u"删除主题"_s);
    }
    auto* undo = find<QPushButton>(u"undo"_s);
    for (const QStringList& themes : {QStringList{u"白酒"_s}, QStringList{u"银行"_s, u"白酒"_s}}) {
        EXPECT_EQ(find<QLabel>(u"removedWords"_s)->text(),
                  u"已删除：主题'%1'（1 条）"_s.arg(themes[0]));
        QTest::mouseClick(undo, Qt::LeftButton);
        ASSERT_TRUE(QTest::qWaitFor([&] {
            return columnTexts(grid(u"MSHFlexGrid1"_s), 1).mid(1).size() == themes.size();
        }));
        EXPECT_EQ(store_.rows(u"select zhutiname from dzhzhuti order by rowid"_s), themes);
    }
    EXPECT_FALSE(undo->isVisible());
}

TEST_F(Form2Test, EachDayHasItsCopyWhichTheMenuTakesBack) {
    const QDir copies(store_.folder() + u"备份"_s);
    load();
    timer(u"dailyBackup"_s)->setInterval(2);
    ASSERT_TRUE(QTest::qWaitFor([&] { return copies.exists(u"2026-11-24"_s); }));
    clock_.moment = clock_.moment.addDays(1);
    store_.run({u"delete from dzhzhuti where zhutiname='银行'"_s});
    timer(u"dailyBackup"_s)->setInterval(2);
    ASSERT_TRUE(QTest::qWaitFor([&] { return copies.exists(u"2026-11-25"_s); })) << "past midnight";
    trigger(u"刷新"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).rows(), 2);

    ASSERT_TRUE(copies.mkdir(u"2026-11-20"_s));
    ASSERT_TRUE(QFile::resize(copies.filePath(u"2026-11-24/wenzhang.mzdat"_s), 0));
    stores_.article.open().execute(u"insert into wenzhang(biaoti) values('今天')"_s);
    trigger(u"恢复"_s);
    QPointer<FormRestore> window = shownWindow<FormRestore>();
    ASSERT_TRUE(window);
    GridView& list = *child<GridView>(window, u"copies"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return gridOf(list).rows() == 4; }));
    auto* restore = child<QPushButton>(window, u"restore"_s);
    auto* why = child<QLabel>(window, u"unreadable"_s);
    const auto boxes = [&] {
        QString marks;
        for (const QString& name : {u"mainStore"_s, u"articleStore"_s, u"heatStore"_s}) {
            const auto* box = child<QCheckBox>(window, name);
            marks += box->isChecked() ? u'+' : box->isEnabled() ? u'-' : u'x';
        }
        return marks;
    };
    EXPECT_EQ(gridOf(list).markedRow(), 1);
    EXPECT_EQ(boxes(), u"+++"_s);
    child<QCheckBox>(window, u"heatStore"_s)->click();
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(boxes(), u"xxx"_s);
    EXPECT_FALSE(restore->isEnabled());
    EXPECT_TRUE(why->text().startsWith(u"主题库不能读取（没有这个文件），文章库"_s));
    QTest::keyClick(&list, Qt::Key_Up);
    EXPECT_EQ(boxes(), u"+x-"_s);
    EXPECT_EQ(why->text(), u"文章库不能读取（是空文件）"_s);
    EXPECT_EQ(gridOf(list).textMatrix(2, 9), u"不能读取"_s);
    restore->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return grid(u"MSHFlexGrid1"_s).rows() == 3; }));
    EXPECT_TRUE(dialogs_.shown[0].contains(u"现在有：1 个主题，1 条"_s));
    EXPECT_TRUE(dialogs_.shown[0].contains(u"备份里有：2 个主题，2 条"_s));
    EXPECT_TRUE(dialogs_.shown[0].contains(u"文章库不换，现在有：1 篇文章"_s));
    EXPECT_TRUE(dialogs_.shown[1].startsWith(u"观潮台|已恢复备份 2026-11-24 的主题库。"_s));
    EXPECT_EQ(TestStores::rows(stores_.article, u"select biaoti from wenzhang"_s),
              QStringList{u"今天"_s});
    EXPECT_FALSE(shownWindow<FormRestore>());
    EXPECT_EQ(globals_.hqmang, 0);
    EXPECT_TRUE(copies.exists(u"2026-11-25 10.00.00 恢复前"_s));

    ASSERT_TRUE(QDir(copies).rename(u"2026-11-25"_s, u"恢复中"_s)) << "by a run that is killed";
    main_.Form_Load();
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).rows(), 2);

    processes_.running = QStringList{u"caijiqi.exe"_s};
    trigger(u"恢复"_s);
    emit shownWindow<FormRestore>()->agreed({u"2026-11-24"_s, {CopiedStore::main}});
    EXPECT_EQ(dialogs_.shown.last(), u"观潮台|采集程序正在运行，请等它结束后再恢复。"_s);
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
        Connection collector = stores_.heat.open();
        collector.execute(u"begin immediate"_s);
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
    dialogs_.picked.clear();
    trigger(u"导入文章"_s);
    EXPECT_TRUE(dialogs_.shown[3].startsWith(u"请选择文章库文件|"_s));
    trigger(u"导出数据"_s);
    EXPECT_EQ(dialogs_.shown.last(), u"观潮台|已取消导出数据!"_s);
}

}  // namespace guanchao
