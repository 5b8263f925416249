#include <QToolButton>

#include "app/auto_update.h"
#include "app/finder.h"
#include "market/form21.h"
#include "monitor/form4.h"
#include "tests/app/form2_fixture.h"
#include "themes/form30.h"
#include "utilities/form34.h"

namespace guanchao {

// F9 under real keys: both tables follow, and what the user has chosen stays chosen.
TEST_F(Form2Test, AnUpdateShowsItsProgressAndThenItsQuotesInBothTablesAndInTheBand) {
    store_.run({u"insert into dmb(dm,jc) values('SH000001','上证指数')"_s});
    load();
    trigger(u"全部显示"_s);
    activate();
    view(u"MSHFlexGrid2"_s).setFocus();
    QTest::keyClick(&view(u"MSHFlexGrid2"_s), Qt::Key_Down);
    const QString chosen = globals_.dangqiandm;
    addManyCodes();
    auto* button = find<QToolButton>(u"Command4"_s);
    auto* progress = find<QProgressBar>(u"progress"_s);
    QStringList seen;
    http_.onGet = [&] {
        EXPECT_FALSE(button->isEnabled());
        seen << label(u"Label6"_s) + u'|' + QString::number(progress->value());
    };
    answerQuotes({{u"sh600000"_s, 20}, {u"sh600519"_s, 15}});
    QTest::keyClick(&main_, Qt::Key_F9);
    until([&] { return !dialogs_.shown.isEmpty(); });
    http_.onGet = nullptr;
    EXPECT_TRUE(seen.contains(u"已更新股票只数:99|99"_s)) << seen.join(u' ').toStdString();
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|更新行情数据完成！\n121只：服务没有这只股票"_s});
    EXPECT_EQ(label(u"Label6"_s), u"行情更新时间：2026-11-24 10:00:00"_s);
    const ResultGrid& stocks = grid(u"MSHFlexGrid2"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return rowTexts(stocks).join(u' ').contains(u"20.00"_s); }));
    EXPECT_EQ(stocks.textMatrix(stocks.markedRow(), 2), chosen);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).textMatrix(1, 2), u"100.00"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).cellForeColor(1, 2), riseColour);
    EXPECT_TRUE(button->isEnabled() && !progress->isVisible());
    EXPECT_EQ(polledDay_.of(u"SH600519"_s).points, (QList<DayPoint>{{10 * 60, 15, 1, 1}}));
    until([&] { return label(u"market"_s).contains(u"上证指数"_s); });
    until([&] { return label(u"quotesAge"_s) == u"刚刚"_s; });
}

TEST_F(Form2Test, QuotesUpdateByThemselvesInASessionOnlyAndWithoutABox) {
    load();
    auto* timer = find<QTimer>(u"autoUpdate"_s);
    EXPECT_FALSE(timer->isActive());
    chooseEntry(main_, u"每30秒"_s);
    EXPECT_EQ(timer->interval(), 30000);
    timer->setInterval(2);
    GridView& themes = view(u"MSHFlexGrid1"_s);
    GridView& stocks = view(u"MSHFlexGrid2"_s);
    trigger(u"全部显示"_s);
    clickHeader(themes, 2);
    clickHeader(stocks, 2);  // descending: the grids share how they were sorted last
    answerQuotes({{u"sh600000"_s, 20}, {u"sh600519"_s, 15}});
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
    const QStringList gained = {u"50.00"_s, u"100.00"_s};
    EXPECT_TRUE(QTest::qWaitFor([&] { return gains(stocks, 6) == gained; })) << "by the code";
    EXPECT_EQ(gains(themes, 2), gained);
    EXPECT_EQ(stocks.horizontalHeader()->sortIndicatorSection(), 2);
    activate();
    QTest::keyClick(&themes, Qt::Key_F5);
    EXPECT_EQ(gains(themes, 2), gained);
    EXPECT_EQ(themes.horizontalHeader()->sortIndicatorSection(), 2);
    click(u"MSHFlexGrid1"_s, 1, 1);
    EXPECT_EQ(stocks.horizontalHeader()->sortIndicatorSection(), -1) << "other stocks";
    http_.answer = nullptr;
    http_.paths.clear();
    timer->start(2);
    until([this] { return http_.paths.size() > 1; });
    timer->stop();
    EXPECT_TRUE(label(u"Label1"_s).startsWith(u"自动更新："_s));
    EXPECT_TRUE(dialogs_.shown.isEmpty());
    QMenu menu;
    const AutoUpdate nextRun(menu, environment_.applicationFolder + u"界面.ini"_s, clock_, [] {});
    EXPECT_TRUE(nextRun.findChild<QTimer*>()->isActive()) << "the choice is kept";
}

TEST_F(Form2Test, ALineTellsWhichServiceFailsAndLeadsToTheServices) {
    services_.quote = {{u"http://a"_s, {}, 0, 1, 0, u"sina"_s, u"quote"_s}};
    load();
    activate();
    auto* line = button(u"serviceLine"_s);
    const auto update = [this] {
        clock_.moment = clock_.moment.addSecs(90);
        QTest::keyClick(&main_, Qt::Key_F9);
        until([this] { return !told().isEmpty(); });
    };
    // By the timer of the line itself.
    const auto comesToSay = [&](const QString& words) {
        return QTest::qWaitFor(
            [&] { return line->isVisible() == !words.isEmpty() && line->text() == words; });
    };
    update();
    update();
    EXPECT_TRUE(comesToSay(u"行情：新浪 10:01 起没有应答"_s)) << line->text().toStdString();
    line->setFocus();
    QTest::keyClick(line, Qt::Key_Space);
    EXPECT_NE(shownWindow<Form34>(), nullptr);
    activate();
    answerQuotes({{u"sh600000"_s, 20}});
    update();
    EXPECT_TRUE(comesToSay({}));
}

// With the patience of a user: what waited for the store itself would fail here.
TEST_F(Form2Test, WhatIsAskedForWhileAnotherHoldsTheStoreComesWhenItIsFree) {
    load();
    activate();
    store_.run({u"update dmb set zhangfu=99 where dm='SH600519'"_s});
    std::optional<Connection> other(held(store_.stores.main));
    QTest::keyClick(&main_, Qt::Key_F5);
    click(u"MSHFlexGrid1"_s, 1, 1);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).textMatrix(1, 1), u"银行"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid2"_s).rows(), 1);
    other.reset();
    until([this] { return grid(u"MSHFlexGrid1"_s).textMatrix(1, 1) == u"白酒"_s; });
    until([this] { return grid(u"MSHFlexGrid2"_s).rows() == 2; });
    EXPECT_TRUE(failures_.texts.isEmpty());
}

TEST_F(Form2Test, AnUpdateThatBringsNothingIsAFailureInTheLog) {
    load();
    const KeptLog log(LogKind::failure);
    http_.answer = [](const QString&) { return QByteArray(); };
    QTest::keyClick(&main_, Qt::Key_F9);
    until([this] { return !dialogs_.shown.isEmpty(); });
    EXPECT_EQ(log.lines, QStringList{u"更新行情数据|应答是空的"_s});
}

TEST_F(Form2Test, EscBreaksTheUpdateOffAndLeavesTheControlsAsBefore) {
    load();
    const QString time = label(u"Label6"_s);
    addManyCodes();
    answerQuotes({{u"sh600000"_s, 20}});
    http_.onGet = [this] {
        if (http_.paths.size() == 2) {
            http_.gate = std::make_shared<Later<bool>>();
        }
    };
    QTest::mouseClick(find<QToolButton>(u"Command4"_s), Qt::LeftButton);
    until([this] { return http_.gate != nullptr; });
    QTest::keyClick(&main_, Qt::Key_Escape);
    EXPECT_TRUE(find<QToolButton>(u"Command4"_s)->isEnabled());
    EXPECT_EQ(label(u"Label6"_s), time);
    EXPECT_EQ(label(u"Label1"_s), u"已停止：更新了 99 只股票的行情，共 122 只"_s);
    EXPECT_EQ(store_.rows(u"select dm,hqtime from dmb,tempcanshu where sp=20"_s),
              QStringList{u"SH600000|2026-11-02 15:00:00"_s})
        << "the batch that was written stays";
    EXPECT_TRUE(dialogs_.shown.isEmpty());
}

// From any window: the keys reach the entry of the main window's menu.
TEST_F(Form2Test, WhatIsTypedAfterCtrlKOpensStockThemeAndCommand) {
    load();
    windows_.openAnew<Form30>();
    const auto choose = [this](const QString& typed) {
        auto* other = openWindows_.find<Form30>();
        other->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(other));
        QTest::keyClick(other, Qt::Key_K, Qt::ControlModifier);
        auto* finder = openWindows_.find<Finder>();
        auto* line = finder->findChild<QLineEdit*>();
        const auto* list = finder->findChild<QListWidget*>();
        line->setText(typed);
        until([&] { return list->count() > 0; });
        QTest::keyClick(line, Qt::Key_Return);
        deleteClosedWindows();
        EXPECT_FALSE(openWindows_.find<Finder>());
    };
    choose(u"gzmt"_s);
    EXPECT_EQ(lineEdit(openWindows_.find<Form21>(), u"Text7"_s)->text(), u"SH600519"_s);
    choose(u"jkgl"_s);
    EXPECT_TRUE(openWindows_.find<Form4>());
}

}  // namespace guanchao
