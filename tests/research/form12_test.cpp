#include "research/form12.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScopeGuard>
#include <QTest>

#include "app/form2.h"
#include "frame/application.h"
#include "grid/grid_view.h"
#include "store/store_error.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_environment.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

class Form12Test : public ::testing::Test, protected TestEnvironment {
protected:
    Form12Test() {
        const QStringList days = {u"2016-04-01"_s, u"2016-04-05"_s};
        const QStringList codes = {u"SH600519"_s, u"SZ002460"_s};
        for (int at = 0; at < 2; ++at) {
            store_.run(
                {u"insert into xuanticai values('%1 00:00:00','白酒',3.5,5,1,8,0.25,10)"_s.arg(
                     days[at]),
                 u"insert into xuanticaigu values('%1 00:00:00','%2','某股','白酒',11,11,11,"
                 u"10,11,22,0,10,300,200,12,12.6,12.3,11.4,13.2,0,150)"_s.arg(days[at],
                                                                              codes[at])});
        }
        store_.run({u"insert into yejiyugao(rowid,zhaiyao,guanzhudu) values(2,'旧',1)"_s});
        globals_.yingyongmulu = store_.folder();
        services_.sitepage.host = u"http://page"_s;
        clock_.moment.setDate(QDate(2026, 12, 5));
    }

    void open() {
        windows_.openAnew<Form12>();
        form_ = shownWindow<Form12>();
        ASSERT_FALSE(form_.isNull());
        form_->resize(1400, 900);
        QApplication::processEvents();
    }
    // Days of the index without a theme: a run over them only shows its progress.
    void makeHistory() {
        stores_.firstHistory = {store_.folder() + u"first"_s, QString()};
        stores_.secondHistory = {store_.folder() + u"second"_s, QString()};
        createStore(stores_.firstHistory.path, {},
                    u"create table SH000001(shijian,sp,qiansp);"
                    u"create table geguhq(dm,shijian,sp,qiansp,zg,zd);"
                    u"create table dzhzhuti(zhutiname,dm);"
                    u"create index day on geguhq(date(shijian));"
                    u"create index code on dzhzhuti(dm);"
                    u"create index theme on dzhzhuti(zhutiname);"
                    u"insert into SH000001 values('2017-05-02',100,100),('2017-05-03',100,100)"_s);
        createStore(stores_.secondHistory.path, {}, u"create table nishihq2(shijian)"_s);
    }

    template <typename Widget>
    Widget* find(const QString& name) {
        auto* widget = form_->findChild<Widget*>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }
    void push(const QString& name) { find<QPushButton>(name)->click(); }
    void type(const QString& box, const QString& text) {
        find<QPlainTextEdit>(box)->setPlainText(text);
    }
    QString text(const QString& box) { return find<QPlainTextEdit>(box)->toPlainText(); }
    ResultGrid& grid() {
        return *static_cast<ResultGrid*>(find<GridView>(u"MSHFlexGrid1"_s)->model());
    }
    void click(int row, Qt::MouseButton button = Qt::LeftButton) {
        auto* view = find<GridView>(u"MSHFlexGrid1"_s);
        const QPoint cell = view->visualRect(view->model()->index(row - 1, 1)).center();
        QTest::mouseClick(view->viewport(), button, {}, cell);
    }
    void clickHeader(int col) {
        auto* header = find<GridView>(u"MSHFlexGrid1"_s)->horizontalHeader();
        const QPoint section(header->sectionViewportPosition(col) + 5, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, section);
    }

    QPointer<Form12> form_;
};

// The stored condition has a line's end inside a word; the store must get both its characters.
TEST_F(Form12Test, TheStoredConditionReachesTheStoreToTheLetter) {
    open();
    EXPECT_EQ(find<EntryBox>(u"Combo9"_s)->currentText(), u"13"_s) << "December and one month";
    EXPECT_EQ(find<EntryBox>(u"Combo7"_s)->currentText(), u"5"_s);
    EXPECT_TRUE(text(u"Text8"_s).contains(u"开盘\n涨<2"_s));
    const QString rule =
        u" and  ticaizhang>0 and  zhangtinshu>zonggeshu/4+2 and yizishu>-1 and \n"
        u"dapanzhang>-10 and touguzhangfu>9 and 股涨幅>0  and 量比>0  and  开盘涨<2  and  前3涨<20 "
        u"\n"_s;
    EXPECT_EQ(text(u"Text6"_s), rule);
    try {
        push(u"Command2"_s);
        FAIL() << "the store takes the stored condition";
    } catch (const StoreError& failure) {
        EXPECT_TRUE(failure.statement().contains(
            u")=date(xuanticaigu.riqi) and  ticaizhang>0 and  zhangtinshu>zonggeshu/4+2 and"
            u" yizishu>-1 and \r\ndapanzhang>-10 and touguzhangfu>9 and 股涨幅>9.5  and 量比>0"
            u"  and  开盘\r\n涨<2  and  前3涨<0  and  前10涨<0\r\n  order by"_s));
    }
    EXPECT_EQ(text(u"Text6"_s), rule) << "the score stays";
    type(u"Text8"_s, QString());
    for (const QString& box : {u"Check1"_s, u"Check2"_s, u"Check3"_s, u"Check4"_s}) {
        find<QCheckBox>(box)->click();
    }
    find<QLineEdit>(u"Text2"_s)->setText(u"白酒"_s);
    find<QLineEdit>(u"Text1"_s)->setText(u"sz002460"_s);
    find<EntryBox>(u"Combo5"_s)->setText(u"2016"_s);
    find<EntryBox>(u"Combo6"_s)->setText(u"4"_s);
    push(u"Command2"_s);
    EXPECT_TRUE(text(u"Text6"_s).startsWith(u"总次数:1当日胜率:100当日平均:10 "_s));
}

TEST_F(Form12Test, TheGridSortsHandsOverAndOpensPages) {
    open();
    type(u"Text8"_s, QString());
    push(u"Command2"_s);
    ASSERT_EQ(grid().rows(), 3);
    const auto firstDay = [&] { return grid().textMatrix(1, 3); };
    for (const QString& day : {u"2016-04-01"_s, u"2016-04-05"_s}) {
        clickHeader(3);
        EXPECT_EQ(firstDay(), day);
        EXPECT_EQ(grid().textMatrix(1, 0), u"1"_s);
    }
    clickHeader(1);
    EXPECT_EQ(grid().textMatrix(1, 1), u"SH600519"_s) << "ascending at first";
    click(2, Qt::RightButton);
    EXPECT_EQ(globals_.dangqiandm + find<QLineEdit>(u"Text1"_s)->text() +
                  find<QLineEdit>(u"Text2"_s)->text(),
              u"SZ002460SZ002460白酒"_s);
    EXPECT_EQ(globals_.dangqianjilu, 2) << "2.44";
    EXPECT_EQ(grid().markedRow(), 2);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    QStringList words;
    for (const QAction* action : menu->actions()) {
        words << action->text();
    }
    EXPECT_EQ(words, QStringList({u"修改关注度"_s, u"导出自选股"_s, u"删除一个"_s}));
    menu->close();
    emit find<GridView>(u"MSHFlexGrid1"_s)->gridDoubleClicked(2, 1);
    EXPECT_THROW(push(u"Command5"_s), OperationError);
    EXPECT_TRUE(QFile(store_.folder() + u"题材选股总结.txt"_s).open(QIODevice::WriteOnly));
    push(u"Command5"_s);
    services_.sitepage.host.clear();
    emit find<GridView>(u"MSHFlexGrid1"_s)->gridDoubleClicked(2, 1);
    EXPECT_EQ(shell_.opened, QStringList({u"http://page/SZ002460.html"_s,
                                          store_.folder() + u"题材选股总结.txt"_s}));
}

TEST_F(Form12Test, TheEditsActOnTheMarkedRecord) {
    open();
    type(u"Text8"_s, QString());
    push(u"Command2"_s);
    grid().setTextMatrix(1, 21, u"7"_s);
    grid().setTextMatrix(2, 4, u"锂电池"_s);
    click(1);
    EXPECT_EQ(globals_.dangqianjilu, 7);
    QTest::keyClick(find<GridView>(u"MSHFlexGrid1"_s), Qt::Key_Down);
    EXPECT_EQ(globals_.dangqianjilu, 2);
    EXPECT_EQ(find<QLineEdit>(u"Text1"_s)->text() + find<QLineEdit>(u"Text2"_s)->text(),
              u"SH600519锂电池"_s);
    dialogs_.typed = u"9"_s;
    type(u"Text6"_s, u"一\n二"_s);
    push(u"Command6"_s);
    EXPECT_TRUE(text(u"Text6"_s).startsWith(u"总次数:2"_s)) << "the score of the new search";
    find<QAction>(u"修改关注度"_s)->trigger();
    const QString record = u"select rowid,zhaiyao,guanzhudu from yejiyugao"_s;
    EXPECT_EQ(store_.rows(record), QStringList{u"2|一\r\n二|9"_s});
    dialogs_.picked = store_.folder() + u"a.txt"_s;
    find<QAction>(u"导出自选股"_s)->trigger();
    EXPECT_TRUE(QFile::exists(dialogs_.picked));
    find<QAction>(u"删除一个"_s)->trigger();
    EXPECT_EQ(store_.rows(record), QStringList());
}

TEST_F(Form12Test, ASearchWithoutResultSaysSo) {
    open();
    type(u"Text8"_s, u" and 量比>1000"_s);
    const auto picture = [this] { return find<GridView>(u"MSHFlexGrid1"_s)->grab().toImage(); };
    const QImage before = picture();
    push(u"Command2"_s);
    EXPECT_EQ(grid().rows(), 1);
    EXPECT_NE(picture(), before) << "another hint";
}

TEST_F(Form12Test, ACompanyIsSearchedOnceTheWindowIsThere) {
    Form2 main(environment_, windows_, desktop_);
    globals_.dangqiangongsi = u"SH600519"_s;
    auto* application = static_cast<Application*>(QCoreApplication::instance());
    application->setDialogs(&dialogs_);
    const auto end = qScopeGuard([&] { application->setDialogs(nullptr); });
    main.findChild<QAction*>(u"题材历史分析"_s)->trigger();
    EXPECT_EQ(dialogs_.shown, QStringList());
    QCoreApplication::sendPostedEvents();
    ASSERT_EQ(dialogs_.shown.size(), 1) << "the store refuses the stored condition";
    EXPECT_TRUE(dialogs_.shown[0].contains(u"执行语句失败。\n原因："_s));
    EXPECT_TRUE(dialogs_.shown[0].contains(u"\n\n列表和统计没有变。"_s));
    QStringList titles;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        titles << (window->isVisible() ? window->windowTitle() : QString());
    }
    EXPECT_TRUE(titles.contains(u"题材选股"_s)) << "for the user to mend the condition";
}

TEST_F(Form12Test, ARunShowsItsDayAndStopsBetweenDays) {
    makeHistory();
    open();
    QStringList captions;
    QObject::connect(form_, &QWidget::windowTitleChanged,
                     [&](const QString& caption) { captions << caption; });
    const struct {
        const char* name;
        std::function<void()> act;
        QString day;  // the last one
    } cases[] = {
        {"to the end", [] {}, u"2017-05-03"_s},
        {"stop", [&] { push(u"stop"_s); }, u"2017-05-02"_s},
        {"Esc", [&] { QTest::keyClick(form_.data(), Qt::Key_Escape); }, u"2017-05-02"_s},
        {"a refused second run",
         [&] {
             find<QPushButton>(u"Command3"_s)->setEnabled(true);
             EXPECT_THROW(push(u"Command3"_s), OperationError);
         },
         u"2017-05-03"_s},
    };
    for (const auto& it : cases) {
        pump_.onRun = [&] {
            for (const QString& name :
                 {u"Command1"_s, u"Command4"_s, u"Command9"_s, u"Command6"_s}) {
                EXPECT_FALSE(find<QPushButton>(name)->isEnabled()) << it.name;
            }
            EXPECT_FALSE(find<QAction>(u"删除一个"_s)->isEnabled());
            EXPECT_EQ(find<QLabel>(u"Label2"_s)->text(), QString()) << "words of the run before";
            it.act();
            const bool stopping = it.day == u"2017-05-02"_s;
            EXPECT_EQ(find<QPushButton>(u"stop"_s)->text(), stopping ? u"正在停止…"_s : u"停止"_s);
            EXPECT_EQ(find<QPushButton>(u"stop"_s)->isEnabled(), !stopping);
        };
        find<QLabel>(u"Label2"_s)->setText(u"旧"_s);
        push(u"Command1"_s);
        EXPECT_EQ(find<QPushButton>(u"stop"_s)->text(), u"停止"_s);
        EXPECT_EQ(captions.mid(captions.size() - 2),
                  QStringList({u"计算到时间:"_s + it.day, u"题材选股"_s}))
            << it.name;
        EXPECT_EQ(find<QLabel>(u"Label6"_s)->text(), it.day);
        EXPECT_TRUE(find<QPushButton>(u"Command1"_s)->isEnabled());
        EXPECT_FALSE(find<QPushButton>(u"stop"_s)->isEnabled());
    }
}

TEST_F(Form12Test, TheForwardReturnsEndAtTheStatementThatTheStoreRefuses) {
    makeHistory();
    store_.run({u"insert into yejiyuyuejinqi(dm,todayriqi) values('SH600519','2016-05-01')"_s});
    open();
    EXPECT_THROW(push(u"Command9"_s), StoreError);
    EXPECT_EQ(find<QLabel>(u"Label2"_s)->text(), u"代码总数:1"_s);
    EXPECT_TRUE(find<QPushButton>(u"Command9"_s)->isEnabled());
}

TEST_F(Form12Test, AWindowThatClosesDuringARunOutlivesIt) {
    makeHistory();
    open();
    pump_.onRun = [this] {
        openWindows_.closeAll();
        deleteClosedWindows();
        ASSERT_FALSE(form_.isNull());
        EXPECT_FALSE(form_->isVisible());
    };
    push(u"Command1"_s);
    EXPECT_EQ(pump_.runs, 1);
    deleteClosedWindows();
    EXPECT_TRUE(form_.isNull());
}

}  // namespace guanchao
