#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <cmath>

#include "grid/grid_view.h"
#include "heat/count_plots.h"
#include "heat/form25.h"
#include "heat/form29.h"
#include "heat/form31.h"
#include "heat/form5.h"
#include "store/store_error.h"
#include "tests/support/qt_printers.h"
#include "tests/support/statement_log.h"
#include "tests/support/test_environment.h"
#include "tests/support/test_windows.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

class HeatWindowsTest : public ::testing::Test, protected TestEnvironment {
protected:
    HeatWindowsTest() {
        globals_.jintian = QDate(2026, 11, 24);
        run(u"update canshu set iszidinyinum=1,zidinyinum=30,guanzhudu=4,shopguanzhudu=3,"
            u"yinqingurl='http://x/?q=tihuandm'"_s);
        run(u"insert into xinwenshul(riqi,zhutiname,onecishu,allzhangfu) values"
            u"('2026-11-24 10:00:00','银行',5,9.0),('2026-11-24 10:00:00','白酒',7,8.0),"
            u"('2026-11-20 10:00:00','旧题',7,8.0)"_s);
        run(u"insert into gongsixinwen(riqi,dm,jc) values('2026-11-24','SH600000','浦发银行')"_s);
        run(u"insert into shopname(shopname,guanzhudu,aboutgegu,riqi) values"
            u"('铜',18,'SH601899','2026-11-24'),('铝',9,'SH601600','2026-11-20')"_s);
        run(u"insert into shophq(shopname,riqi) values('铜','2026-11-24')"_s);
    }

    void run(const QString& statement) { stores_.heat.open().execute(statement); }
    QString settings() {
        return TestStores::rows(stores_.heat,
                                u"select iszidinyinum,zidinyinum,guanzhudu,"
                                u"shopguanzhudu from canshu"_s)
            .first();
    }

    template <typename Form>
    void open() {
        windows_.openAnew<Form>();
        form_ = shownWindow<Form>();
    }

    template <typename Widget>
    Widget* find(const QString& name) {
        auto* widget = form_->findChild<Widget*>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }
    ResultGrid& grid(const QString& name) {
        return *static_cast<ResultGrid*>(find<GridView>(name)->model());
    }
    QPoint cell(int row) {
        const auto* view = find<GridView>(u"MSHFlexGrid1"_s);
        return view->visualRect(view->model()->index(row - 1, 2)).center();
    }
    void press(int row, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(find<GridView>(u"MSHFlexGrid1"_s)->viewport(), button, {}, cell(row));
    }
    // What can be chosen in the popup, which then closes.
    static QString popup() {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu) {
            return {};
        }
        menu->close();
        QStringList words;
        for (const QAction* action : menu->actions()) {
            words << (action->isEnabled() ? action->text() : QString());
        }
        return words.join(u'|');
    }
    void click(const QString& button) { find<QPushButton>(button)->click(); }

    QPointer<QWidget> form_;
};

TEST_F(HeatWindowsTest, TheLoadWritesTheStoredSettingsBackInOneGo) {
    const struct {
        QString on, days;
        bool importRuns;
        QString daysWritten;
    } cases[] = {{u"1"_s, u"30"_s, false, u"30"_s},
                 {u"1"_s, u"1"_s, false, u"7"_s},
                 {u"0"_s, u"30"_s, false, {}},
                 {u"1"_s, u"30"_s, true, {}}};
    const QString update = u"caijiqi.mzdat: update canshu set iszidinyinum=1,zidinyinum="_s;
    for (const auto& it : cases) {
        run(u"update canshu set iszidinyinum="_s + it.on + u",zidinyinum="_s + it.days);
        Connection heat = stores_.heat.open();
        std::optional<Transaction> import;
        if (it.importRuns) {
            import.emplace(heat);
        }
        const StatementLog log;
        open<Form25>();
        EXPECT_EQ(StatementLog::statements().filter(u": update"_s).join(u'|'),
                  it.daysWritten.isEmpty() ? QString() : update + it.daysWritten);
        EXPECT_EQ(find<QCheckBox>(u"Check1"_s)->isChecked(), it.on == u'1');
        EXPECT_EQ(find<QLineEdit>(u"Text3"_s)->text(), u"0"_s) << "whatever is stored";
        EXPECT_EQ(grid(u"MSHFlexGrid1"_s).rows(), 3);
    }
    Connection heat = stores_.heat.open();
    const Transaction import(heat);
    const StatementLog log;
    open<Form29>();
    EXPECT_EQ(find<QLineEdit>(u"Text3"_s)->text(), u"3"_s);
    EXPECT_TRUE(StatementLog::statements().filter(u": update"_s).isEmpty());
}

TEST_F(HeatWindowsTest, TheSettingsAreWrittenAtEveryChange) {
    open<Form31>();
    auto* days = find<QLineEdit>(u"Text2"_s);
    days->setText(u"15"_s);
    EXPECT_EQ(settings(), u"1|15|4|3"_s);
    days->setText(u"1"_s);
    EXPECT_EQ(days->text(), u"7"_s);
    EXPECT_EQ(settings(), u"1|7|4|3"_s);
    find<QCheckBox>(u"Check1"_s)->setChecked(false);
    days->setText(u"20"_s);
    EXPECT_EQ(settings(), u"0|7|4|3"_s) << "without the check the days wait";
    find<QCheckBox>(u"Check1"_s)->setChecked(true);
    find<QLineEdit>(u"Text3"_s)->setText(u"2.5x"_s);
    EXPECT_EQ(settings(), u"1|20|2.5|3"_s);
}

TEST_F(HeatWindowsTest, ANewsRankingShowsFindsAndOpens) {
    globals_.dangqianzhuti = u"银行"_s;
    open<Form25>();
    EXPECT_EQ(find<QLineEdit>(u"Text1"_s)->text(), u"银行"_s);
    press(2, Qt::RightButton);
    EXPECT_EQ(globals_.dangqianzhuti, u"白酒"_s);
    EXPECT_EQ(find<QLineEdit>(u"Text1"_s)->text(), u"白酒"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).markedRow(), 2);
    EXPECT_EQ(grid(u"MSHFlexGrid2"_s).rows(), 2);
    auto* plot = find<DayPlot>(u"plot"_s);
    QTest::keyClick(plot, Qt::Key_Left);
    EXPECT_TRUE(plot->chosenText().startsWith(u"2026-11-24  一日 7"_s));
    auto* view = find<GridView>(u"MSHFlexGrid1"_s);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, cell(2));
    EXPECT_EQ(shell_.opened, QStringList{u"http://x/?q=%B0%D7%BE%C6"_s});
    for (int at = 0; at < 100; ++at) {
        run(u"insert into xinwenshul(riqi,zhutiname) values('2026-11-20','题%1')"_s.arg(at));
    }
    find<QCheckBox>(u"Check2"_s)->setChecked(true);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).rows(), 3) << "until the ranking is asked for";
    click(u"Command9"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).rows(), 104);
    find<QLineEdit>(u"Text1"_s)->setText(u"题50"_s);
    for (const QString& name : {u"Text2"_s, u"Text3"_s, u"Text1"_s}) {
        EXPECT_EQ(view->rowAt(0), 0) << "Enter finds in its own box only";
        QTest::keyClick(find<QLineEdit>(name), Qt::Key_Return);
    }
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).textMatrix(view->rowAt(0) + 1, 2), u"题50"_s);
    find<QLineEdit>(u"Text1"_s)->setText(u"行"_s);
    click(u"Command2"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).textMatrix(view->rowAt(0) + 1, 2), u"银行"_s);
    EXPECT_EQ(globals_.dangqianzhuti, u"白酒"_s) << "a find chooses nothing";
    auto* header = view->horizontalHeader();
    const QPoint date(header->sectionViewportPosition(1) + 5, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, date);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).textMatrix(1, 1), u"2026-11-20"_s);
}

TEST_F(HeatWindowsTest, EachWindowStartsTheCollectorWithItsWord) {
    open<Form25>();
    click(u"Command1"_s);
    open<Form31>();
    EXPECT_EQ(find<QLineEdit>(u"Text1"_s)->toolTip(), u"要查找的股票代码，可以不完整"_s);
    click(u"Command1"_s);
    open<Form29>();
    click(u"Command1"_s);
    EXPECT_EQ(processes_.started,
              QStringList({u"/caijiqi|zhuti"_s, u"/caijiqi|gongsi"_s, u"/caijiqi|shop"_s}));
}

TEST_F(HeatWindowsTest, TheCommodityMonitorShowsItsListAndItsMenu) {
    open<Form29>();
    find<QLineEdit>(u"Text3"_s)->setText(u"6"_s);
    EXPECT_EQ(settings(), u"1|30|4|6"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).rows(), 2) << "those of the clock's day";
    press(1, Qt::RightButton);
    EXPECT_EQ(popup(), u"打开采集网页|添加商品|修改商品|删除商品"_s);
    EXPECT_EQ(find<GridView>(u"MSHFlexGrid1"_s)->toolTip(), u"SH601899"_s);
    find<QAction>(u"打开采集网页"_s)->trigger();
    EXPECT_EQ(shell_.opened, QStringList{u"http://x/?q=%CD%AD%20%BC%DB%B8%F1"_s});
    EXPECT_EQ(grid(u"MSHFlexGrid2"_s).rows(), 2);
    find<QAction>(u"删除商品"_s)->trigger();
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).rows(), 1);
    EXPECT_EQ(grid(u"MSHFlexGrid2"_s).rows(), 1) << "its history is gone";
    press(1, Qt::RightButton);
    EXPECT_EQ(popup(), u"|添加商品||"_s) << "on the empty ground";
    find<QCheckBox>(u"Check2"_s)->setChecked(true);
    click(u"Command9"_s);
    press(1, Qt::RightButton);
    dialogs_.onAsk = [this] { openWindows_.closeAll(); };
    find<QAction>(u"删除商品"_s)->trigger();
    EXPECT_EQ(dialogs_.shown.last(), u"观潮台|删除商品'铝'完成!"_s);
    EXPECT_EQ(TestStores::rows(stores_.heat, u"select * from shopname"_s), QStringList());
}

// The menu and the commands behind it act on the item that stands on the screen.
TEST_F(HeatWindowsTest, AHistoryThatFailsLeavesNothingOfTheFormerItem) {
    run(u"insert into shopname(shopname,riqi,zongfen) values('O''x','2026-11-24',-1)"_s);
    open<Form29>();
    press(1);
    ASSERT_EQ(grid(u"MSHFlexGrid2"_s).rows(), 2);
    press(2, Qt::RightButton);
    EXPECT_EQ(find<QLineEdit>(u"Text1"_s)->text() + u'|' + globals_.dangqianshangpin, u"O'x|O'x"_s);
    EXPECT_EQ(grid(u"MSHFlexGrid2"_s).rows(), 1);
    EXPECT_EQ(grid(u"MSHFlexGrid1"_s).markedRow(), 2);
    EXPECT_EQ(popup(), u"打开采集网页|添加商品|修改商品|删除商品"_s);
}

TEST(CountPlots, LabelsOfCountsStandAtWholeNumbers) {
    NewsPlot plot;
    for (const double most : {0., 1., 2., 3., 4., 7., 1234.}) {
        const QDate day(2026, 11, 23);
        plot.showDays({{day, {0, 5, most}, {}}, {day.addDays(1), {most, 5 + most, 1}, {}}});
        for (const QAbstractAxis* axis : plot.chart()->axes(Qt::Vertical)) {
            const auto& it = *qobject_cast<const QValueAxis*>(axis);
            EXPECT_EQ(std::fmod(it.max() - it.min(), it.tickCount() - 1), 0) << most;
            EXPECT_EQ(std::fmod(it.min(), 1), 0) << most;
        }
    }
}

TEST_F(HeatWindowsTest, TheCommodityEditorOpensForOneOrForANewOne) {
    open<Form29>();
    press(1);
    const QPointer monitor = form_;
    monitor->findChild<QAction*>(u"修改商品"_s)->trigger();
    form_ = shownWindow<Form5>();
    ASSERT_TRUE(form_);
    EXPECT_EQ(form_->windowTitle(), u"修改商品"_s);
    EXPECT_EQ(find<QLineEdit>(u"Text1"_s)->text(), u"铜"_s);
    find<QLineEdit>(u"Text2"_s)->setText(u"5"_s);
    click(u"Command2"_s);
    globals_.dangqianshangpin = u"铜"_s;
    monitor->findChild<QAction*>(u"添加商品"_s)->trigger();
    form_ = shownWindow<Form5>();
    EXPECT_EQ(form_->windowTitle(), u"添加商品"_s);
    find<QLineEdit>(u"Text1"_s)->setText(u"铜"_s);
    click(u"Command1"_s);
    EXPECT_EQ(find<QLineEdit>(u"Text2"_s)->text(), u"5"_s) << "the stored row is shown";
    click(u"Command3"_s);
    EXPECT_EQ(TestStores::rows(stores_.heat, u"select shopname from shopname"_s),
              QStringList{u"铝"_s});
}

}  // namespace guanchao
