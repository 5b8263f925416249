#include "heat/form25.h"
#include "heat/form29.h"
#include "heat/form31.h"
#include "heat/form5.h"
#include "heat/headlines_window.h"
#include "tests/support/window_test.h"

namespace guanchao {

class HeatWindowsTest : public WindowTest {
protected:
    HeatWindowsTest() {
        globals_.jintian = QDate(2026, 11, 24);
        runHeat(
            u"update canshu set iszidinyinum=1,zidinyinum=30,guanzhudu=4,shopguanzhudu=3,"
            u"yinqingurl='http://x/?q=tihuandm'"_s);
        runHeat(
            u"insert into xinwenshul(riqi,zhutiname,onecishu,allzhangfu) values"
            u"('2026-11-24 10:00:00','银行',5,9.0),('2026-11-24 10:00:00','白酒',7,8.0),"
            u"('2026-11-20 10:00:00','旧题',7,8.0)"_s);
        runHeat(
            u"insert into gongsixinwen(riqi,dm,jc) values('2026-11-24','SH600000','浦发银行')"_s);
        runHeat(
            u"insert into shopname(shopname,guanzhudu,aboutgegu,riqi) values"
            u"('铜',18,'SH601899','2026-11-24'),('铝',9,'SH601600','2026-11-20')"_s);
        runHeat(u"insert into shophq(shopname,riqi) values('铜','2026-11-24')"_s);
    }

    QString settings() {
        return heatRows(u"select iszidinyinum,zidinyinum,guanzhudu,shopguanzhudu from canshu"_s)
            .first();
    }

    ResultGrid& history() const { return grid(u"MSHFlexGrid2"_s); }
    void pressRow(int row, Qt::MouseButton button = Qt::LeftButton) const {
        QTest::mouseClick(view().viewport(), button, {}, cellOf(view(), row, 2));
    }
};

TEST_F(HeatWindowsTest, TheLoadMendsTheStoredDaysAndOpensUnderAnImportToo) {
    const std::tuple<QString, QString, bool, QString> cases[] = {
        {u"1"_s, u"30"_s, false, u"1|30|4|3"_s},
        {u"1"_s, u"1"_s, false, u"1|7|4|3"_s},
        {u"0"_s, u"1"_s, false, u"0|1|4|3"_s},
        {u"1"_s, u"1"_s, true, u"1|1|4|3"_s}};
    for (const auto& [on, days, importRuns, expected] : cases) {
        runHeat(u"update canshu set iszidinyinum="_s + on + u",zidinyinum="_s + days);
        Connection heat = stores_.heat.open();
        std::optional<Transaction> import;
        if (importRuns) {
            import.emplace(heat);
        }
        open<Form25>();
        EXPECT_EQ(settings(), expected);
        EXPECT_EQ(find<QCheckBox>(u"Check1"_s)->isChecked(), on == u'1');
        EXPECT_EQ(text(u"Text3"_s), u"0"_s) << "whatever is stored";
        EXPECT_EQ(grid().rows(), 3);
    }
}

TEST_F(HeatWindowsTest, TheSettingsAreWrittenAtEveryChange) {
    open<Form31>();
    auto* days = edit(u"Text2"_s);
    days->setText(u"15"_s);
    EXPECT_EQ(settings(), u"1|15|4|3"_s);
    days->setText(u"1"_s);
    EXPECT_EQ(days->text(), u"7"_s);
    EXPECT_EQ(settings(), u"1|7|4|3"_s);
    find<QCheckBox>(u"Check1"_s)->setChecked(false);
    days->setText(u"20"_s);
    EXPECT_EQ(settings(), u"0|7|4|3"_s) << "without the check the days wait";
    find<QCheckBox>(u"Check1"_s)->setChecked(true);
    edit(u"Text3"_s)->setText(u"2.5x"_s);
    EXPECT_EQ(settings(), u"1|20|2.5|3"_s);
}

TEST_F(HeatWindowsTest, ANewsRankingLeadsToTheSearchPageAndToTheHeadlinesBehindACount) {
    globals_.dangqianzhuti = u"银行"_s;
    open<Form25>();
    pressRow(2, Qt::RightButton);
    EXPECT_EQ(popup().join(u'|'), u"打开采集网页|查看新闻标题|热度图"_s);
    EXPECT_EQ(globals_.dangqianzhuti, u"白酒"_s);
    EXPECT_EQ(history().rows(), 2);
    QTest::mouseDClick(view().viewport(), Qt::LeftButton, {}, cellOf(view(), 2, 2));
    EXPECT_EQ(std::exchange(shell_.opened, {}), QStringList{u"http://x/?q=%B0%D7%BE%C6"_s});
    QWidget* ranking = form_;
    openBy<HeadlinesWindow>(ranking, u"查看新闻标题"_s);
    EXPECT_EQ(form_->windowTitle(), u"新闻标题　白酒　2026-11-24"_s);
    Connection heat = stores_.heat.open();
    const QDateTime time(QDate(2026, 11, 24), QTime(9, 0));
    keepHeadlines(heat, u"白酒"_s, u"2026-11-24"_s,
                  {{time.addSecs(60), u"后"_s, u"时报"_s, u"http://h/2"_s},
                   {time, u"先"_s, u"日报"_s, u"http://h/1"_s},
                   {time.addSecs(-1), u"无网址"_s, {}, {}}});
    openBy<HeadlinesWindow>(ranking, u"查看新闻标题"_s);
    EXPECT_EQ(rowText(grid(u"headlines"_s), 2), u"2|2026-11-24 09:00:00|先|日报|http://h/1"_s);
    GridView& list = view(u"headlines"_s);
    QTest::keyClick(&list, Qt::Key_Return);
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Enter);
    click(u"open"_s);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, cellOf(list, 1, 2));
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, cellOf(list, 3, 2));
    EXPECT_EQ(shell_.opened,
              (QStringList{u"http://h/2"_s, u"http://h/1"_s, u"http://h/1"_s, u"http://h/2"_s}));
}

TEST_F(HeatWindowsTest, EachWindowStartsTheCollectorWithItsWordOnceTheOrderIsPlaced) {
    const QString order = u"select mainisrun,isvisible,today from canshu"_s;
    const QStringList placed = {u"1|1|2026-11-24 00:00:00"_s};
    const auto withdraw = [this] { runHeat(u"update canshu set mainisrun=0,today=''"_s); };
    processes_.onStart = [&] {
        EXPECT_EQ(heatRows(order), placed);
        withdraw();
    };
    open<Form25>();
    click(u"Command1"_s);
    open<Form31>();
    click(u"Command1"_s);
    open<Form29>();
    click(u"Command1"_s);
    EXPECT_EQ(processes_.started,
              QStringList({u"/caijiqi|zhuti"_s, u"/caijiqi|gongsi"_s, u"/caijiqi|shop"_s}));
    for (const QString& name : {u"caijiqi.exe"_s, u"caijiqi2.exe"_s}) {
        processes_.running = {name};
        withdraw();
        click(u"Command1"_s);
        EXPECT_EQ(heatRows(order), placed) << "all the same";
        EXPECT_TRUE(holds(told().join(u' '), u"已在运行"_s));
    }
    EXPECT_EQ(processes_.started.size(), 3);
    processes_.running.clear();
    processes_.onStart = nullptr;
    processes_.canStart = false;
    click(u"Command1"_s);
    EXPECT_TRUE(holds(told().join(u' '), u"没有启动，请检查程序文件是否存在：\n/caijiqi"_s));
    runHeat(u"delete from canshu"_s);
    click(u"Command1"_s);
    EXPECT_EQ(processes_.started.size(), 5) << "no settings are no hindrance";
    runHeat(u"drop table canshu"_s);
    EXPECT_THROW(click(u"Command1"_s), StoreError);
    EXPECT_EQ(processes_.started.size(), 5);
}

TEST_F(HeatWindowsTest, TheCommodityMonitorShowsItsListAndItsMenu) {
    open<Form29>();
    edit(u"Text3"_s)->setText(u"6"_s);
    EXPECT_EQ(settings(), u"1|30|4|6"_s);
    pressRow(1, Qt::RightButton);
    trigger(u"打开采集网页"_s);
    EXPECT_EQ(shell_.opened, QStringList{u"http://x/?q=%CD%AD%20%BC%DB%B8%F1"_s});
    EXPECT_EQ(history().rows(), 2);
    dialogs_.answer = false;
    trigger(u"删除商品"_s);
    EXPECT_EQ(told(), QStringList{u"观潮台|确实要删除商品'铜'吗?（历史 1 条）"_s});
    EXPECT_EQ(grid().rows(), 2) << "of the clock's day there is one";
    dialogs_.answer = true;
    trigger(u"删除商品"_s);
    EXPECT_EQ(grid().rows(), 1);
    EXPECT_EQ(history().rows(), 1);
    EXPECT_EQ(heatRows(u"select * from shophq"_s), QStringList()) << "its history is gone";
}

// The menu and the commands behind it act on the item that stands on the screen.
TEST_F(HeatWindowsTest, AHistoryThatFailsLeavesNothingOfTheFormerItem) {
    runHeat(u"insert into shopname(shopname,riqi,zongfen) values('O''x','2026-11-24',-1)"_s);
    runHeat(u"insert into shophq(shopname,riqi,zongfen) values('O''x','2026-11-23',7.5)"_s);
    open<Form29>();
    pressRow(2);
    EXPECT_EQ(rowText(history(), 1).section(u'|', 0, 3), u"1|2026-11-23|O'x|7.50"_s);
    runHeat(u"alter table shophq rename to gone"_s);
    pressRow(1, Qt::RightButton);
    EXPECT_EQ(text(u"Text1"_s) + u'|' + globals_.dangqianshangpin, u"铜|铜"_s);
    EXPECT_EQ(history().rows(), 1);
    EXPECT_EQ(popup().join(u'|'), u"打开采集网页|热度图|添加商品|修改商品|删除商品"_s);
    runHeat(u"alter table gone rename to shophq"_s);
}

TEST_F(HeatWindowsTest, TheCommodityEditorOpensForOneOrForANewOne) {
    open<Form29>();
    pressRow(1);
    QWidget* monitor = form_;
    openBy<Form5>(monitor, u"修改商品"_s);
    EXPECT_EQ(form_->windowTitle() + text(u"Text1"_s), u"修改商品铜"_s);
    edit(u"Text2"_s)->setText(u"5"_s);
    click(u"Command2"_s);
    globals_.dangqianshangpin = u"铜"_s;
    openBy<Form5>(monitor, u"添加商品"_s);
    EXPECT_EQ(form_->windowTitle(), u"添加商品"_s);
    edit(u"Text1"_s)->setText(u" 铜 "_s);
    click(u"Command1"_s);
    EXPECT_EQ(text(u"Text2"_s), u"5"_s) << "the stored row is shown";
    click(u"Command3"_s);
    EXPECT_EQ(heatRows(u"select shopname from shopname"_s), QStringList{u"铝"_s});
    QEvent activated(QEvent::WindowActivate);
    QApplication::sendEvent(monitor, &activated);
    press(monitor, u"undo"_s);
    until([this] { return heatRows(u"select shopname from shopname"_s).size() == 2; });
    EXPECT_EQ(heatRows(u"select shopname,riqi from shophq"_s), QStringList{u"铜|2026-11-24"_s});
}

}  // namespace guanchao
