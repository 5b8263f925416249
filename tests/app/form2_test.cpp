#include "exchange/form3.h"
#include "exchange/form33.h"
#include "platform/guide.h"
#include "research/form24.h"
#include "tests/app/form2_fixture.h"

namespace guanchao {

TEST_F(Form2Test, AMenuActsOnTheThemeThatKeysHaveMarkedAndRedrawsWhatItTells) {
    load();
    GridView& themes = view(u"MSHFlexGrid1"_s);
    click(u"MSHFlexGrid1"_s, 1, 1);
    QTest::keyClick(&themes, Qt::Key_Down);
    EXPECT_EQ(themes.toolTip(), u"白酒"_s);
    QApplication::processEvents();
    EXPECT_EQ(grid(u"MSHFlexGrid2"_s).textMatrix(1, 2), u"SH600519"_s) << "as a click shows it";
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
    globals_.dangqianzhuti = u"银行"_s;
    trigger(u"删除主题"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).rows(), 3) << "on the screen until the next refresh";
    dialogs_.typed = u"2"_s;
    trigger(u"全删指定只数的主题"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).rows(), 2);
}

TEST_F(Form2Test, WhatIsImportedShowsByItselfAndKeepsTheMark) {
    load();
    edit(u"Text3"_s)->setText(u"-1"_s);
    click(u"MSHFlexGrid1"_s, 2, 1);
    writeFile(store_.folder() + u"a.txt"_s, u"600519\tX\t老窖\r\n"_s.toUtf8());
    trigger(u"导入主题"_s);
    auto* texts = environment_.openWindows.find<Form3>();
    child<QLineEdit>(texts, u"Text4"_s)->setText(store_.folder() + u"a.txt"_s);
    child<QPushButton>(texts, u"Command4"_s)->click();
    const ResultGrid& themes = grid(u"MSHFlexGrid1"_s);
    until([&] { return columnTexts(themes, 1).contains(u"老窖"_s); });
    EXPECT_EQ(themes.textMatrix(themes.markedRow(), 1), u"白酒"_s);
}

TEST_F(Form2Test, AnEmptyTableOfThemesTellsHowTheyComeToBeListed) {
    load();
    const auto says = [this](const QString& words) {
        const GridView& themes = view(u"MSHFlexGrid1"_s);
        return QTest::qWaitFor([&] {
            return gridOf(themes).rows() == 1 && themes.hint().section(u'\n', 0, 0) == words;
        });
    };
    activate();
    edit(u"Text3"_s)->setText(u"1.5"_s);
    QTest::keyClick(edit(u"Text3"_s), Qt::Key_Return);
    EXPECT_TRUE(says(u"2 个主题的关注度不大于 1.5"_s));
    store_.run({u"delete from dzhzhuti"_s});
    QTest::keyClick(&main_, Qt::Key_F5);
    EXPECT_TRUE(says(u"还没有主题"_s));
    windows_.openAnew<Form33>();
    store_.addMember(u"红利"_s, u"SH600000"_s, 0);
    emit shownWindow<Form33>()->imported();
    EXPECT_TRUE(says(u"1 个主题的关注度不大于 1.5"_s)) << "without a key";
    edit(u"Text3"_s)->setText({});
    QTest::keyClick(edit(u"Text3"_s), Qt::Key_Return);
    EXPECT_TRUE(says(u"1 个主题的关注度不大于 0"_s));
    EXPECT_TRUE(view(u"MSHFlexGrid1"_s).hint().contains(u"写 -1"_s));
}

TEST_F(Form2Test, APressOnAStockHandsItOverOpensTheListAndAddsItWhereAThemeIsMarked) {
    load();
    trigger(u"全部显示"_s);
    click(u"MSHFlexGrid2"_s, 1, 5);
    EXPECT_EQ(globals_.dangqiandm + globals_.dangqianjc, u"SH600000浦发银行"_s);
    const auto* list = find<QListWidget>(u"List1"_s);
    EXPECT_TRUE(list->isVisible()) << "a left press leaves the list open";
    click(u"MSHFlexGrid1"_s, 1, 1);
    EXPECT_FALSE(list->isVisible());
    activate();
    trigger(u"全部显示"_s);
    click(u"MSHFlexGrid2"_s, 1, 5);
    QTest::keyClick(&view(u"MSHFlexGrid2"_s), Qt::Key_Down);
    EXPECT_FALSE(list->isVisible()) << "keys walk over the grid, not under the list";
    EXPECT_EQ(text(u"Text1"_s), u"SH600519"_s);
    const auto canAdd = [this] {
        globals_.dangqianzhuti.clear();  // as windows do
        click(u"MSHFlexGrid2"_s, 1, 1, Qt::RightButton);
        EXPECT_FALSE(popup().isEmpty());
        return find<QAction>(u"addzhutigu"_s)->isEnabled();
    };
    EXPECT_TRUE(canAdd()) << "to the theme that is marked";
    grid(u"MSHFlexGrid1"_s).unmark();
    EXPECT_FALSE(canAdd());
}

TEST_F(Form2Test, AnEntryChosenAgainBringsTheWindowForwardWhoseWorkGoesOn) {
    services_.stockList = {{u"http://list"_s, {}, 10, 1, 0, u"sina"_s}};
    load();
    trigger(u"更新代码表"_s);
    const QPointer<QDialog> window = shownWindow<QDialog>();
    auto* begin = child<QPushButton>(window, u"begin"_s);
    until([&] { return begin->isEnabled(); });
    http_.gate = std::make_shared<Later<bool>>();
    begin->click();
    window->showMinimized();
    trigger(u"更新代码表"_s);
    EXPECT_EQ(shownWindows<QDialog>(), QList<QDialog*>{window});
    EXPECT_FALSE(window->isMinimized());
    const auto* stop = child<QPushButton>(window, u"stop"_s);
    EXPECT_TRUE(stop->isVisible() && stop->isEnabled()) << "it goes on";
    closeWindows();
    deleteClosedWindows();
    http_.gate->deliver(true);
}

TEST_F(Form2Test, TheWindowHidesInTheTrayAndComesBackWhenThatIsGoneForGood) {
    load();
    beginMonitoring();
    dialogs_.answer = false;
    main_.close();
    EXPECT_FALSE(main_.isVisible());
    EXPECT_EQ(tray_.hidden(), 1);
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
        trigger(entry);
        EXPECT_TRUE(QFile::exists(store_.folder() + place + u"/guanchaotai.desktop"_s));
    }
    services_.isPractice = true;
    writeFile(store_.folder() + u"guanchaotai-practice"_s);
    trigger(launchers[0].first);
    EXPECT_TRUE(contentOf(store_.folder() + u"programs/guanchaotai-practice.desktop"_s)
                    .contains("guanchaotai-practice\"\n"))
        << "the practice market is started too";
    trigger(u"帮助"_s);
    trigger(u"聚益通"_s);
    open<Form24>()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form_));
    QTest::keyClick(form_.data(), Qt::Key_F1);
    const QString leader = store_.folder() + u"帮助.html"_s;
    EXPECT_TRUE(contentOf(leader).contains("url=软件使用说明.html#form24\""));
    EXPECT_EQ(shell_.opened, QStringList({guide, u"http://vendor/"_s, leader}));
    tellNotOpened(leader, dialogs_);
    EXPECT_TRUE(dialogs_.shown.last().endsWith(guide)) << "the user knows of no other page";
}

TEST_F(Form2Test, TellsWhatServicesIniHolds) {
    services_.complaints = {u"[history] x"_s, u"[quote] y"_s};
    services_.isPractice = true;
    services_.quote = {{u"http://quotes"_s, {}, 0, 1, 0, u"tencent"_s, u"quote"_s}};
    load();
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|[history] x\n[quote] y"_s});
    const auto* band = find<QLabel>(u"practiceBand"_s);
    EXPECT_TRUE(band->isVisible());
    EXPECT_TRUE(band->text().startsWith(u"注意：这里是练习行情，可是"_s));
    EXPECT_TRUE(band->text().endsWith(u"行情（腾讯）"_s)) << band->text().toStdString();
    services_ = {};
    services_.isPractice = true;
    timeIsUp(timer(u"serviceLooks"_s));
    EXPECT_EQ(band->text(), u"练习行情：价格都是编造的，和真实的市场无关"_s);
}

TEST_F(Form2Test, AVendorIsNoticedOnlyWhereItHasANewVersion) {
    timer(u"Timer4"_s)->setInterval(1);
    load();
    until([this] { return !http_.paths.isEmpty(); });
    const auto check = [this] {
        trigger(u"查看新版本"_s);
        timeIsUp(timer(u"Timer4"_s));
    };
    http_.gate = std::make_shared<Later<bool>>();
    check();
    check();
    EXPECT_EQ(http_.paths.size(), 2) << "one at a time";
    trigger(u"tuopanexit"_s);
    EXPECT_EQ(processes_.ended.size(), 2) << "it is broken off";
    EXPECT_EQ(dialogs_.shown, QStringList());
    http_.gate = nullptr;
    http_.answer = [](const QString&) { return "[chaoxin]\nbanben=9\ndownurl=http://x/\n"; };
    check();
    EXPECT_EQ(shell_.opened, QStringList{u"http://x/"_s});
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|发现软件有新的版本，请前去下载！"_s});
}

}  // namespace guanchao
