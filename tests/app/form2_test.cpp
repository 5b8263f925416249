#include "app/form2.h"
#include "app/auto_update.h"

#include <QListWidget>
#include <QProgressBar>
#include <QToolButton>

#include "exchange/form_restore.h"
#include "platform/qt_http_client.h"
#include "research/form24.h"
#include "tests/support/files.h"
#include "tests/support/quote_reply.h"
#include "tests/support/raw_service.h"
#include "tests/support/window_test.h"

namespace guanchao {

class Form2Test : public WindowTest {
protected:
    Form2Test() {
        store_.run(
            {u"insert into dmb(dm,numdm,jc,shenmu,zhangfu) values"
             u"('SH600000','600000','浦发银行','pfyh',2),"
             u"('SH600519','600519','贵州茅台','gzmt',-1)"_s});
        store_.addMember(u"银行"_s, u"SH600000"_s);
        store_.addMember(u"白酒"_s, u"SH600519"_s);
        form_ = &main_;
        main_.resize(1200, 700);
    }

    void load() {
        main_.Form_Load();
        main_.show();
        QApplication::processEvents();
    }

    // More than fit into one request.
    void addManyCodes() {
        for (int at = 0; at < 120; ++at) {
            store_.run({u"insert into dmb(dm) values('SH%1')"_s.arg(601000 + at)});
        }
    }
    void beginMonitoring() {
        timeIsUp(timer(u"Timer1"_s));
        ASSERT_TRUE(QTest::qWaitFor([this] { return timer(u"Timer2"_s)->isActive(); }));
    }
    QTimer* timer(const QString& name) { return find<QTimer>(name); }
    void click(const QString& gridName, int row, int col, Qt::MouseButton button = Qt::LeftButton) {
        clickCell(view(gridName), row, col, button);
    }
    // Keys reach the fields and the shortcuts of a window that is the active one.
    void activate() {
        main_.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&main_));
    }
    void press(const QString& theme, const QString& dm, const QString& jc) {
        globals_.dangqianzhuti = theme;
        globals_.dangqiandm = dm;
        globals_.dangqianjc = jc;
    }

    Form2 main_{environment_, windows_, desktop_};
};

TEST_F(Form2Test, TheLoadShowsThemesAndItsFirstTimerStartsTheSecond) {
    main_.Form_Load();
    EXPECT_EQ(main_.windowTitle(), u"观潮台(V3.7)"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).textMatrix(1, 1), u"银行"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid2"_s).rows(), 1);
    EXPECT_EQ(label(u"Label4"_s), u"主题库更新时间：2026-11-01 08:00:00"_s);
    EXPECT_EQ(globals_.jiankongkaiqi, 1);
    EXPECT_TRUE(timer(u"Timer1"_s)->isActive() && timer(u"Timer4"_s)->isActive());
    EXPECT_FALSE(timer(u"Timer2"_s)->isActive() || timer(u"Timer3"_s)->isActive());
    QStringList captions;
    QObject::connect(&main_, &QWidget::windowTitleChanged,
                     [&](const QString& caption) { captions << caption; });
    beginMonitoring();
    EXPECT_EQ(captions, QStringList({u"观潮台(V3.7)   正在更新代码表"_s, u"观潮台(V3.7)"_s}));
    EXPECT_FALSE(timer(u"Timer1"_s)->isActive());
    EXPECT_TRUE(timer(u"Timer2"_s)->isActive());
}

TEST_F(Form2Test, AClickOnAThemeShowsItsMembers) {
    load();
    click(u"MSHFlexGrid1"_s, 2, 1);
    EXPECT_EQ(text(u"Text2"_s), u"白酒"_s);
    EXPECT_EQ(view(u"MSHFlexGrid1"_s).toolTip(), u"白酒"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).markedRow(), 2);
    EXPECT_EQ(grid(u"MSHFlexGrid2"_s).textMatrix(1, 2), u"SH600519"_s);
    QTest::mouseDClick(view(u"MSHFlexGrid1"_s).viewport(), Qt::LeftButton, {},
                       cellOf(view(u"MSHFlexGrid1"_s), 2, 1));
    ASSERT_TRUE(shownWindow<Form24>());
    EXPECT_EQ(lineEdit(shownWindow<Form24>(), u"Text1"_s)->text(), u"白酒"_s);
    closeWindows();
    clickHeader(view(u"MSHFlexGrid1"_s), 2);
    EXPECT_EQ(view(u"MSHFlexGrid1"_s).toolTip(), QString());
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).textMatrix(1, 1), u"白酒"_s) << "by the gain, ascending";
}

TEST_F(Form2Test, AMenuActsOnTheThemeThatKeysHaveMarked) {
    load();
    GridView& themes = view(u"MSHFlexGrid1"_s);
    click(u"MSHFlexGrid1"_s, 1, 1);
    QTest::keyClick(&themes, Qt::Key_Down);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).markedRow(), 2);
    EXPECT_EQ(themes.toolTip(), u"白酒"_s);
    QApplication::processEvents();
    EXPECT_EQ(grid(u"MSHFlexGrid2"_s).textMatrix(1, 2), u"SH600519"_s) << "as a click shows it";
    dialogs_.typed = u"9"_s;
    trigger(u"修改关注度"_s);
    EXPECT_EQ(store_.rows(u"select distinct zhutiname from dzhzhuti where guanzhudu=9"_s),
              QStringList{u"白酒"_s});
    QTest::keyClick(&themes, Qt::Key_Return);
    QTest::keyClick(&view(u"MSHFlexGrid2"_s), Qt::Key_Space);
    EXPECT_EQ(globals_.dangqiandm, u"SH600519"_s);
}

TEST_F(Form2Test, ARefreshKeepsTheMark) {
    load();
    activate();
    click(u"MSHFlexGrid1"_s, 2, 1);
    GridView& themes = view(u"MSHFlexGrid1"_s);
    store_.run({u"update dmb set zhangfu=99 where dm='SH600519'"_s});
    QTest::keyClick(&themes, Qt::Key_F5);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).textMatrix(1, 1), u"白酒"_s);
    EXPECT_EQ(themes.selectionModel()->selectedRows(),
              QModelIndexList{themes.model()->index(0, 0)});
    QTest::keyClick(&themes, Qt::Key_Down);
    EXPECT_EQ(globals_.dangqianzhuti, u"银行"_s) << "keys go on from the mark";
}

TEST_F(Form2Test, APressOnAStockHandsItOverAndOpensTheList) {
    load();
    trigger(u"全部显示"_s);
    click(u"MSHFlexGrid2"_s, 1, 5);
    EXPECT_EQ(globals_.dangqiandm, u"SH600000"_s);
    EXPECT_EQ(globals_.dangqianjc, u"浦发银行"_s);
    const auto* list = find<QListWidget>(u"List1"_s);
    EXPECT_TRUE(list->isVisible()) << "a left press leaves the list open";
    click(u"MSHFlexGrid1"_s, 1, 1);
    EXPECT_FALSE(list->isVisible());
    activate();
    trigger(u"全部显示"_s);
    GridView& stocks = view(u"MSHFlexGrid2"_s);
    click(u"MSHFlexGrid2"_s, 1, 5);
    EXPECT_TRUE(list->isVisible());
    QTest::keyClick(&stocks, Qt::Key_Down);
    EXPECT_FALSE(list->isVisible()) << "keys walk over the grid, not under the list";
    EXPECT_EQ(text(u"Text1"_s), u"SH600519"_s);
    QTest::keyClick(&stocks, Qt::Key_Up);
    EXPECT_FALSE(list->isVisible());
    for (const QString& place : {u"MSHFlexGrid2"_s, u"Text1"_s, u"Text3"_s}) {
        click(u"MSHFlexGrid2"_s, 1, 5);
        ASSERT_TRUE(list->isVisible());
        find<QWidget>(place)->setFocus();
        QTest::keyClick(find<QWidget>(place), Qt::Key_Escape);
        EXPECT_FALSE(list->isVisible()) << place.toStdString();
    }
}

TEST_F(Form2Test, ThePopupsOpenOnTheRightButton) {
    load();
    trigger(u"全部显示"_s);
    const struct {
        QString grid;
        int entries;
    } cases[] = {{u"MSHFlexGrid1"_s, 8}, {u"MSHFlexGrid2"_s, 10}};
    for (const auto& it : cases) {
        click(it.grid, 1, 1, Qt::RightButton);
        EXPECT_FALSE(find<QListWidget>(u"List1"_s)->isVisible());
        EXPECT_EQ(popup().size(), it.entries) << it.grid.toStdString();
        EXPECT_EQ(grid(it.grid).markedRow(), 1);
    }
    EXPECT_TRUE(find<QAction>(u"addzhutigu"_s)->isEnabled());
    globals_.dangqianzhuti.clear();
    click(u"MSHFlexGrid2"_s, 1, 1, Qt::RightButton);
    EXPECT_FALSE(find<QAction>(u"addzhutigu"_s)->isEnabled()) << "there is no theme to add to";
    QApplication::activePopupWidget()->close();
}

TEST_F(Form2Test, AThemeCommandRedrawsWhatItTells) {
    load();
    click(u"MSHFlexGrid1"_s, 2, 1);
    ASSERT_EQ(globals_.dangqianzhuti, u"白酒"_s);
    dialogs_.typed = u"sh600000"_s;
    trigger(u"addzhutigu"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid2"_s).rows(), 3) << "the stocks of the theme";
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).textMatrix(2, 3), u"1"_s) << "the themes stay as they were";
    dialogs_.typed = u"4"_s;
    dialogs_.onInput = [this] { globals_.dangqianzhuti.clear(); };
    trigger(u"修改相关度"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid2"_s).rows(), 3) << "of the theme that the command began with";
    dialogs_.onInput = nullptr;
    globals_.dangqianzhuti = u"白酒"_s;
    trigger(u"修改关注度"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).textMatrix(2, 3), u"2"_s);
    dialogs_.typed = u"消费"_s;
    trigger(u"修改主题名称"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).textMatrix(2, 1), u"消费"_s);
    globals_.dangqianzhuti = u"银行"_s;
    trigger(u"删除主题"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).rows(), 3) << "on the screen until the next refresh";
    dialogs_.typed = u"2"_s;
    trigger(u"全删指定只数的主题"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).rows(), 2);
    EXPECT_EQ(dialogs_.shown.last(), u"观潮台|删除主题'消费'完成!"_s);
}

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

    trigger(u"恢复"_s);
    QPointer<FormRestore> window = shownWindow<FormRestore>();
    ASSERT_TRUE(window);
    GridView& list = *child<GridView>(window, u"copies"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return gridOf(list).rows() == 3; }));
    auto* restore = child<QPushButton>(window, u"restore"_s);
    EXPECT_EQ(gridOf(list).markedRow(), 1);
    QTest::keyClick(&list, Qt::Key_Down);
    restore->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return grid(u"MSHFlexGrid1"_s).rows() == 3; }));
    EXPECT_TRUE(dialogs_.shown[0].contains(u"现在有：1 个主题，1 条"_s));
    EXPECT_TRUE(dialogs_.shown[0].contains(u"备份里有：2 个主题，2 条"_s));
    EXPECT_TRUE(dialogs_.shown[1].startsWith(u"观潮台|已恢复备份 2026-11-24"_s));
    EXPECT_FALSE(shownWindow<FormRestore>());
    EXPECT_EQ(globals_.hqmang, 0);
    EXPECT_TRUE(copies.exists(u"2026-11-25 10.00.00 恢复前"_s));

    ASSERT_TRUE(QDir(copies).rename(u"2026-11-25"_s, u"恢复中"_s)) << "by a run that is killed";
    main_.Form_Load();
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).rows(), 2);

    processes_.running = QStringList{u"caijiqi.exe"_s};
    trigger(u"恢复"_s);
    emit shownWindow<FormRestore>()->agreed(u"2026-11-24"_s);
    EXPECT_EQ(dialogs_.shown.last(), u"观潮台|采集程序正在运行，请等它结束后再恢复。"_s);
    EXPECT_EQ(failures_.texts, QStringList());
}

TEST_F(Form2Test, EachPopupEntryActsOnWhatWasPressed) {
    load();
    press(u"银行"_s, u"SH600000"_s, u"浦发银行"_s);
    dialogs_.typed = u"7"_s;
    const QString member = u"select xiangguandu,guanzhudu from dzhzhuti where zhutiname='银行'"_s;
    const struct {
        QString entry, query;
        QStringList rows;
    } cases[] = {
        {u"修改相关度"_s, member, {u"7|1"_s}},
        {u"修改关注度"_s, member, {u"7|7"_s}},
        {u"添加到自选股"_s, u"select dm,jc from zixuangu"_s, {u"SH600000|浦发银行"_s}},
        {u"从自选股删除"_s, u"select dm,jc from zixuangu"_s, {}},
        {u"deletezhutigu"_s, member, {}},
    };
    for (const auto& it : cases) {
        trigger(it.entry);
        EXPECT_EQ(store_.rows(it.query), it.rows) << it.entry.toStdString();
    }
    EXPECT_EQ(store_.rows(u"select xiugaizhutitime from tempcanshu"_s),
              QStringList{u"2026-11-01 08:00:00"_s})
        << "no command of the popups stamps the themes";
}

TEST_F(Form2Test, EveryEntryOpensItsWindowOnWhatWasPressed) {
    const struct {
        QString entry, caption;
    } cases[] = {
        {u"添加主题"_s, u"添加主题"_s},
        {u"所属全部主题"_s, u"浦发银行_属于主题"_s},
        {u"自选股"_s, u"自选股"_s},
        {u"历史涨幅"_s, u"主题历史涨幅与大盘对比"_s},
        {u"主题历史涨幅"_s, u"主题历史涨幅与大盘对比"_s},
        {u"题材历史分析"_s, u"题材选股"_s},
        {u"分时数据"_s, u"分时行情"_s},
        {u"当前行情"_s, u"分时行情"_s},
        {u"F10资料"_s, u"浦发银行(SH600000)-----F10资料"_s},
        {u"监控管理"_s, u"监控管理(监控未启动)"_s},
        {u"添加主题监控"_s, u"添加主题监控"_s},
        {u"添加个股监控"_s, u"添加个股监控"_s},
        {u"文章管理器"_s, u"文章管理器"_s},
        {u"导入主题"_s, u"导入主题"_s},
        {u"新闻数量分析"_s, u"主题新闻数量分析--因特网热度排名"_s},
        {u"公司新闻数量分析"_s, u"公司新闻数量分析--因特网热度排名"_s},
        {u"商品价格监控"_s, u"商品价格监控--因特网数据采集"_s},
        {u"设置代理服务器"_s, u"设置代理服务器"_s},
    };
    globals_.yingyongmulu = store_.folder();
    store_.run({u"update tempcanshu set f10url='http://host/'"_s});
    for (const auto& it : cases) {
        press(u"银行"_s, u"SH600000"_s, u"浦发银行"_s);
        globals_.bianjimoshi = 1;
        trigger(it.entry);
        const auto* opened = shownWindow<QWidget>();
        ASSERT_TRUE(opened) << it.entry.toStdString();
        EXPECT_EQ(opened->windowTitle(), it.caption);
        closeWindows();
        deleteClosedWindows();
    }
}

TEST_F(Form2Test, AQuoteRunShowsItsProgressAndEndsWithTheRefresh) {
    load();
    addManyCodes();
    auto* button = find<QToolButton>(u"Command4"_s);
    auto* progress = find<QProgressBar>(u"progress"_s);
    QStringList seen;
    http_.onGet = [&] {
        EXPECT_FALSE(button->isEnabled());
        seen << label(u"Label6"_s) + u'|' + QString::number(progress->value());
    };
    http_.answer = [](const QString& path) {
        return quoteReply(path, {{u"sh600000"_s, 20}, {u"sh600519"_s, 15}});
    };
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(seen.contains(u"已更新股票只数:99|99"_s)) << seen.join(u' ').toStdString();
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|更新行情数据完成！\n120只：服务没有这只股票"_s});
    EXPECT_EQ(label(u"Label6"_s), u"行情更新时间：2026-11-24 10:00:00"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).textMatrix(1, 2), u"100.00"_s);
    EXPECT_TRUE(button->isEnabled());
    EXPECT_FALSE(progress->isVisible());
}

TEST_F(Form2Test, QuotesUpdateByThemselvesInASessionOnlyAndWithoutABox) {
    load();
    auto* timer = find<QTimer>(u"autoUpdate"_s);
    EXPECT_FALSE(timer->isActive());
    for (QAction* entry : main_.findChildren<QAction*>()) {
        if (entry->text() == u"每30秒"_s) {
            entry->trigger();
        }
    }
    EXPECT_EQ(timer->interval(), 30000);
    timer->setInterval(2);
    GridView& themes = view(u"MSHFlexGrid1"_s);
    GridView& stocks = view(u"MSHFlexGrid2"_s);
    trigger(u"全部显示"_s);
    clickHeader(themes, 2);
    clickHeader(stocks, 2);  // descending: the grids share how they were sorted last
    http_.answer = [](const QString& path) {
        return quoteReply(path, {{u"sh600000"_s, 20}, {u"sh600519"_s, 15}});
    };
    clock_.moment.setTime(QTime(12, 0));
    int due = 0;
    timer->callOnTimeout([&] { ++due; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return due > 2; }));
    EXPECT_TRUE(http_.paths.isEmpty()) << "the market is closed";
    clock_.moment.setTime(QTime(13, 0));
    ASSERT_TRUE(QTest::qWaitFor([this] { return !http_.paths.isEmpty(); }));
    timer->stop();
    const auto gains = [](const GridView& view, int col) {
        return columnTexts(gridOf(view), col).mid(1);
    };
    EXPECT_EQ(gains(themes, 2), QStringList({u"50.00"_s, u"100.00"_s}));
    EXPECT_EQ(gains(stocks, 6), QStringList({u"50.00"_s, u"100.00"_s})) << "by the code";
    EXPECT_EQ(stocks.horizontalHeader()->sortIndicatorSection(), 2);
    activate();
    QTest::keyClick(&themes, Qt::Key_F5);
    EXPECT_EQ(gains(themes, 2), QStringList({u"50.00"_s, u"100.00"_s}));
    EXPECT_EQ(themes.horizontalHeader()->sortIndicatorSection(), 2);
    click(u"MSHFlexGrid1"_s, 1, 1);
    EXPECT_EQ(stocks.horizontalHeader()->sortIndicatorSection(), -1) << "other stocks";
    edit(u"Text2"_s)->setText(u"酒"_s);
    QTest::mouseClick(find<QToolButton>(u"Command2"_s), Qt::LeftButton);
    http_.answer = [](const QString& path) { return quoteReply(path, {{u"sh600519"_s, 30}}); };
    http_.paths.clear();
    clock_.moment.setTime(QTime(13, 5));
    timer->start(2);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !http_.paths.isEmpty(); }));
    timer->stop();
    EXPECT_EQ(gains(themes, 2), QStringList{u"200.00"_s}) << "those of the search";
    EXPECT_EQ(gains(stocks, 7), QStringList{u"200.00"_s});
    EXPECT_EQ(label(u"Label6"_s), u"行情更新时间：2026-11-24 13:05:00"_s);
    EXPECT_TRUE(dialogs_.shown.isEmpty());
    auto* line = find<QLabel>(u"Label1"_s);
    http_.answer = nullptr;
    http_.paths.clear();
    timer->start(2);
    EXPECT_TRUE(QTest::qWaitFor([this] { return http_.paths.size() > 1; }));
    timer->stop();
    EXPECT_TRUE(line->text().startsWith(u"自动更新："_s));
    EXPECT_TRUE(dialogs_.shown.isEmpty());
    QMenu menu;
    const AutoUpdate nextRun(menu, environment_.applicationFolder + u"界面.ini"_s, clock_, [] {});
    EXPECT_TRUE(nextRun.findChild<QTimer*>()->isActive()) << "the choice is kept";
}

// With the patience of a user: what waited for the store itself would fail here.
TEST_F(Form2Test, WhatIsAskedForWhileAnotherHoldsTheStoreComesWhenItIsFree) {
    load();
    activate();
    store_.run({u"update dmb set zhangfu=99 where dm='SH600519'"_s});
    std::optional<Connection> other(store_.stores.main.open());
    other->execute(u"begin exclusive"_s);
    QTest::keyClick(&main_, Qt::Key_F5);
    click(u"MSHFlexGrid1"_s, 1, 1);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).textMatrix(1, 1), u"银行"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid2"_s).rows(), 1);
    other.reset();
    EXPECT_TRUE(QTest::qWaitFor([this] {
        return grid(u"MSHFlexGrid1"_s).textMatrix(1, 1) == u"白酒"_s &&
               grid(u"MSHFlexGrid2"_s).rows() == 2;
    }));
    EXPECT_TRUE(failures_.texts.isEmpty());
}

TEST_F(Form2Test, EscBreaksTheUpdateOffAndLeavesTheControlsAsBefore) {
    load();
    const QString time = label(u"Label6"_s);
    addManyCodes();
    http_.answer = [](const QString& path) { return quoteReply(path, {}); };
    http_.onGet = [this] {
        if (http_.paths.size() == 2) {
            http_.gate = std::make_shared<Later<bool>>();
        }
    };
    QTest::mouseClick(find<QToolButton>(u"Command4"_s), Qt::LeftButton);
    auto* stop = find<QPushButton>(u"stopRun"_s);
    EXPECT_TRUE(stop->isVisible());
    EXPECT_FALSE(find<QToolButton>(u"Command4"_s)->isEnabled());
    QTest::keyClick(&main_, Qt::Key_Escape);
    EXPECT_FALSE(stop->isVisible());
    EXPECT_TRUE(find<QToolButton>(u"Command4"_s)->isEnabled());
    EXPECT_EQ(label(u"Label6"_s), time);
    EXPECT_EQ(label(u"Label1"_s), u"已停止：更新了 99 只股票的行情，共 122 只"_s);
    EXPECT_TRUE(dialogs_.shown.isEmpty());
}

TEST_F(Form2Test, TheGridsShareTheWindowAsTold) {
    load();
    for (const QSize& size : {QSize(1200, 700), QSize(1600, 900)}) {
        main_.resize(size);
        QApplication::processEvents();
        const auto* left = find<GridView>(u"MSHFlexGrid1"_s);
        const auto* right = find<GridView>(u"MSHFlexGrid2"_s);
        const QSize inner = main_.centralWidget()->size();
        EXPECT_EQ(right->width(), inner.width() - left->width() - left->pixels(250));
        EXPECT_EQ(right->height(), inner.height() - left->pixels(1700));
        EXPECT_EQ(left->height(), right->height());
    }
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

TEST_F(Form2Test, TheWindowHidesInTheTrayAndComesBackWhenThatIsGoneForGood) {
    load();
    beginMonitoring();
    dialogs_.answer = false;
    main_.close();
    EXPECT_FALSE(main_.isVisible());
    EXPECT_EQ(tray_.hidden(), 1);
    EXPECT_TRUE(processes_.ended.isEmpty());
    trigger(u"tuopan显示"_s);
    EXPECT_TRUE(main_.isVisible());
    EXPECT_EQ(tray_.hidden(), 0);
    main_.close();
    const auto seconds = [this](int count) {
        for (int second = 0; second < count; ++second) {
            timeIsUp(timer(u"Timer2"_s));
            QCoreApplication::sendPostedEvents();
        }
        return main_.isVisible();
    };
    desktopTray_.isThere = false;
    EXPECT_FALSE(seconds(10));
    desktopTray_.isThere = true;
    EXPECT_FALSE(seconds(1)) << "the panel has only restarted";
    desktopTray_.isThere = false;
    EXPECT_FALSE(seconds(10));
    EXPECT_TRUE(seconds(1));
    EXPECT_TRUE(main_.isMinimized());
    EXPECT_EQ(tray_.hidden(), 0);
    dialogs_.shown.clear();
    main_.close();
    main_.close();
    EXPECT_TRUE(main_.isVisible() && main_.isMinimized()) << "without a tray it can't hide";
    EXPECT_EQ(dialogs_.shown.filter(u"没有托盘，窗口改为最小化"_s).size(), 1) << "told once";
}

TEST_F(Form2Test, TheToolsAndHelpEntriesDoWhatTheySay) {
    load();
    const QString guide = store_.folder() + u"软件使用说明.html"_s;
    trigger(u"帮助"_s);
    trigger(u"聚益通"_s);
    ASSERT_EQ(dialogs_.shown.size(), 2) << "neither is there";
    EXPECT_TRUE(dialogs_.shown.first().endsWith(guide));
    services_.vendor.host = u"http://vendor"_s;
    writeFile(guide);
    const QList<QPair<QString, QString>> launchers = {{u"建程序快捷方式"_s, u"programs"_s},
                                                      {u"建桌面快捷方式"_s, u"desktop"_s},
                                                      {u"开机启动"_s, u"startup"_s}};
    for (const auto& [entry, place] : launchers) {
        const QString launcher = store_.folder() + place + u"/guanchaotai.desktop"_s;
        EXPECT_FALSE(QFile::exists(launcher));
        trigger(entry);
        EXPECT_TRUE(contentOf(launcher).contains(
            u"Exec=\"%1guanchaotai\"\nPath=%1\n"_s.arg(store_.folder()).toUtf8()));
    }
    for (const QString& entry : {u"帮助"_s, u"聚益通"_s, u"软件初始化"_s, u"关于"_s}) {
        trigger(entry);
    }
    EXPECT_EQ(shell_.opened, QStringList({guide, u"http://vendor/"_s}));
    EXPECT_EQ(dialogs_.shown.sliced(2),
              QStringList({u"观潮台|软件初始化的作用是注册必要的DLL和控件。"_s,
                           u"观潮台|本软件由观潮台开发组制作。"_s}));
}

TEST_F(Form2Test, AVendorThatIsDeadOrSilentIsNeverNoticed) {
    RawService vendor;
    http_.client = std::make_unique<QtHttpClient>();
    services_.vendor = vendor.service();
    timer(u"Timer4"_s)->setInterval(1);
    const auto checkBegins = [&](const ServiceManner& manner) {
        vendor.requests.clear();
        vendor.answer = manner.answer;
        // Again and again: it is refused while the check before it is under way.
        const bool begun = QTest::qWaitFor([&] {
            trigger(u"查看新版本"_s);
            return !vendor.requests.isEmpty();
        });
        timer(u"Timer4"_s)->stop();
        return begun;
    };
    for (const ServiceManner& it : hangingUp) {
        EXPECT_TRUE(checkBegins(it)) << it.what;
    }
    for (const ServiceManner& it : neverDone) {
        load();
        EXPECT_TRUE(checkBegins(it)) << it.what;
        const int before = vendor.hangUps;
        trigger(u"tuopanexit"_s);
        EXPECT_EQ(std::exchange(processes_.ended, {}).size(), 2);
        EXPECT_TRUE(QTest::qWaitFor([&] { return vendor.hangUps > before; })) << "it is broken off";
    }
    EXPECT_EQ(dialogs_.shown, QStringList());
    const QByteArray newer = "[chaoxin]\nbanben=9\ndownurl=http://x/\n";
    EXPECT_TRUE(checkBegins(
        {"answers", [&](QTcpSocket& socket) { socket.write(httpHead(newer.size()) + newer); }}));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !shell_.opened.isEmpty(); }));
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|发现软件有新的版本，请前去下载！"_s});
}

}  // namespace guanchao
