#include "research/form12.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QScopeGuard>

#include "formats/gbk.h"
#include "frame/application.h"
#include "store/failure.h"
#include "store/store_error.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_environment.h"
#include "tests/support/test_history.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

class Form12Test : public ::testing::Test, protected TestEnvironment {
protected:
    Form12Test() {
        const QStringList stocks = {u"'2016-04-01','SH600519'"_s, u"'2016-04-05','SZ002460'"_s};
        for (const QString& stock : stocks) {
            store_.run(
                {u"insert into xuanticaigu values("_s + stock +
                 u",'某股','白酒',11,11,11,10,11,22,0,10,300,200,12,12.6,12.3,11.4,13.2,0,150)"_s});
        }
        store_.run(
            {u"insert into xuanticai select riqi,ticai,3.5,5,1,8,0.25,10 from xuanticaigu"_s});
        store_.run({u"insert into yejiyugao(rowid,zhaiyao,guanzhudu) values(2,'旧',1)"_s});
        globals_.yingyongmulu = store_.folder();
        services_.sitepage.host = u"http://page"_s;
        clock_.moment.setDate(QDate(2026, 12, 5));
    }

    void open() {
        windows_.openAnew<Form12>();
        form_ = shownWindow<Form12>();
        form_->resize(1400, 900);
        QApplication::processEvents();
    }
    void openWithAllRows() {
        open();
        box(u"Text8"_s)->clear();
        press(form_, u"Command2"_s);
        ASSERT_EQ(grid().rows(), 3);
    }
    // A run over a history without themes only shows its progress.
    void openWithHistory() {
        writeQuietHistory(stores_, store_.folder());
        open();
    }

    QPlainTextEdit* box(const QString& name) { return child<QPlainTextEdit>(form_, name); }
    QPushButton* button(const QString& name) { return child<QPushButton>(form_, name); }
    GridView& view() { return *child<GridView>(form_, u"MSHFlexGrid1"_s); }
    ResultGrid& grid() { return gridOf(view()); }
    QString label(const QString& name) { return child<QLabel>(form_, name)->text(); }
    // The code and the theme that a pressed row has handed over.
    QString handedOver() {
        return globals_.dangqiandm + lineEdit(form_, u"Text1"_s)->text() +
               lineEdit(form_, u"Text2"_s)->text();
    }

    QPointer<Form12> form_;
};

// The stored condition has a line's end inside a word; the store must get both its characters.
TEST_F(Form12Test, TheStoredConditionReachesTheStoreToTheLetter) {
    open();
    EXPECT_EQ(child<EntryBox>(form_, u"Combo9"_s)->currentText(), u"13"_s)
        << "December and one month";
    EXPECT_TRUE(box(u"Text8"_s)->toPlainText().contains(u"开盘\n涨<2"_s));
    const QString rule = box(u"Text6"_s)->toPlainText();
    EXPECT_TRUE(rule.startsWith(u" and  ticaizhang>0 and"_s));
    try {
        button(u"Command2"_s)->click();
        FAIL() << "the store takes the stored condition";
    } catch (const StoreError& failure) {
        EXPECT_TRUE(failure.statement().contains(
            u")=date(xuanticaigu.riqi) and  ticaizhang>0 and  zhangtinshu>zonggeshu/4+2 and"
            u" yizishu>-1 and \r\ndapanzhang>-10 and touguzhangfu>9 and 股涨幅>9.5  and 量比>0"
            u"  and  开盘\r\n涨<2  and  前3涨<0  and  前10涨<0\r\n  order by"_s));
    }
    EXPECT_EQ(box(u"Text6"_s)->toPlainText(), rule) << "no score takes its place";
}

TEST_F(Form12Test, TheBoxesReachTheSearch) {
    openWithAllRows();
    for (const QString& name : {u"Check1"_s, u"Check2"_s, u"Check3"_s, u"Check4"_s}) {
        child<QCheckBox>(form_, name)->click();
    }
    lineEdit(form_, u"Text2"_s)->setText(u"白酒"_s);
    lineEdit(form_, u"Text1"_s)->setText(u"sz002460"_s);
    child<EntryBox>(form_, u"Combo5"_s)->setText(u"2016"_s);
    child<EntryBox>(form_, u"Combo6"_s)->setText(u"4"_s);
    press(form_, u"Command2"_s);
    EXPECT_TRUE(box(u"Text6"_s)->toPlainText().startsWith(u"总次数:1当日胜率:100当日平均:10 "_s));
}

TEST_F(Form12Test, TheGridSortsHandsOverAndOpensPages) {
    openWithAllRows();
    for (const QString& day : {u"2016-04-01"_s, u"2016-04-05"_s}) {
        clickHeader(view(), 3);
        EXPECT_EQ(grid().textMatrix(1, 3), day);
    }
    clickCell(view(), 2, 1, Qt::RightButton);
    EXPECT_EQ(handedOver(), u"SH600519SH600519白酒"_s);
    EXPECT_EQ(grid().markedRow(), 2);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions().size(), 3);
    menu->close();
    const auto openPage = [&] {
        QTest::mouseDClick(view().viewport(), Qt::LeftButton, {}, cellOf(view(), 2, 1));
    };
    openPage();
    EXPECT_THROW(button(u"Command5"_s)->click(), OperationError);
    EXPECT_TRUE(QFile(store_.folder() + u"题材选股总结.txt"_s).open(QIODevice::WriteOnly));
    press(form_, u"Command5"_s);
    services_.sitepage.host.clear();
    openPage();
    EXPECT_EQ(shell_.opened, QStringList({u"http://page/SH600519.html"_s,
                                          store_.folder() + u"题材选股总结.txt"_s}));
}

TEST_F(Form12Test, EachEditOfTheMarkedRecordSearchesAnewAtItsPlace) {
    store_.run({u"insert into yejiyugao(rowid,zhaiyao) values(3,'别')"_s});
    openWithAllRows();
    grid().setTextMatrix(1, 21, u"7"_s);
    clickCell(view(), 1, 1);
    EXPECT_EQ(globals_.dangqianjilu, 7);
    QTest::keyClick(&view(), Qt::Key_Down);
    EXPECT_EQ(globals_.dangqianjilu, 2) << "2.44";
    EXPECT_EQ(handedOver(), u"SH600519SH600519白酒"_s);

    const auto searched = [this] {
        return box(u"Text6"_s)->toPlainText().startsWith(u"总次数:2"_s);
    };
    dialogs_.onTell = [&] { dialogs_.shown << (searched() ? u"after the search"_s : u"before"_s); };
    const auto summary = [this] { button(u"Command6"_s)->click(); };
    const auto attention = [this] { child<QAction>(form_, u"修改关注度"_s)->trigger(); };
    const auto removal = [this] { child<QAction>(form_, u"删除一个"_s)->trigger(); };
    const QString input = u"修改关注度|请输入关注度，以方便查找自己最关心的股票。|0"_s;
    const QString question = u"听涛阁| 确实要删除吗！"_s;
    const QString edited = u" 一\r\n二|7"_s;
    const struct {
        std::function<void()> act;
        QString typed;  // into the box of the summary or of the attention
        bool answer, refused, searched;
        QStringList shown;
        QString row;
    } cases[] = {
        {attention,
         u"7"_s,
         true,
         false,
         true,
         {input, u"观潮台|修改关注度''完成!"_s, u"before"_s},
         u"旧|7"_s},
        {attention, {}, true, false, false, {input}, u"旧|7"_s},
        {attention, u"高"_s, true, true, false, {input}, u"旧|7"_s},
        {summary,
         u" 一\n二"_s,
         true,
         false,
         true,
         {u"听涛阁|修改摘要完成!"_s, u"after the search"_s},
         edited},
        {summary, u"it's"_s, true, true, false, {}, edited},
        {removal, {}, false, false, false, {question, u"观潮台| 已退出！"_s, u"before"_s}, edited},
        {removal, {}, true, false, true, {question}, {}},
    };
    for (const auto& it : cases) {
        dialogs_.shown.clear();
        dialogs_.answer = it.answer;
        dialogs_.typed = it.typed;
        box(u"Text6"_s)->setPlainText(it.typed);
        bool refused = false;
        try {
            it.act();
        } catch (const StoreError&) {
            refused = true;
        }
        EXPECT_EQ(refused, it.refused);
        EXPECT_EQ(searched(), it.searched);
        EXPECT_EQ(dialogs_.shown, it.shown);
        EXPECT_EQ(
            store_.rows(u"select zhaiyao,guanzhudu from yejiyugao where rowid=2"_s).join(u' '),
            it.row);
    }
    EXPECT_EQ(store_.rows(u"select zhaiyao from yejiyugao"_s), QStringList{u"别"_s});
}

TEST_F(Form12Test, ARefusedSearchTellsThatTheEditStays) {
    open();
    globals_.dangqianjilu = 2;
    try {
        button(u"Command6"_s)->click();
        FAIL() << "the search fails";
    } catch (const StoreError& failure) {
        EXPECT_TRUE(failure.remains().endsWith(u"\n已经写入并保留：摘要。"_s));
    }
    EXPECT_TRUE(dialogs_.shown.isEmpty());
}

TEST_F(Form12Test, AnExportWritesCodesAndNamesAnew) {
    openWithAllRows();
    const auto exportTo = [this](const QString& path) {
        dialogs_.picked = path;
        dialogs_.shown.clear();
        child<QAction>(form_, u"导出自选股"_s)->trigger();
    };
    exportTo(u"  "_s);
    EXPECT_EQ(dialogs_.shown,
              QStringList(store_.folder() + u"自选股|自选业绩预告2027-01-05.txt|文本文档(*.txt)|"
                                            u"ASP文件(*.asp)|VBS脚本(*.vbs)|所有文件(*.*)"_s))
        << "nothing picked";
    QFile file(store_.folder() + u"a.txt"_s);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(1000, 'x'));
    file.close();
    exportTo(file.fileName());
    EXPECT_EQ(dialogs_.shown.last(), u"操作提示|文件保存成功！"_s);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(textFromGbk(file.readAll()), u"SZ002460\t某股\r\nSH600519\t某股\r\n"_s);
    EXPECT_THROW(exportTo(store_.folder() + u"none/a.txt"_s), OperationError);
}

TEST_F(Form12Test, ACompanyIsSearchedOnceTheWindowIsThere) {
    globals_.dangqiangongsi = u"SH600519"_s;
    auto* application = static_cast<Application*>(QCoreApplication::instance());
    application->setDialogs(&dialogs_);
    const auto end = qScopeGuard([&] { application->setDialogs(nullptr); });
    windows_.openAnew<Form12>();
    EXPECT_EQ(dialogs_.shown, QStringList());
    QCoreApplication::sendPostedEvents();
    ASSERT_EQ(dialogs_.shown.size(), 1) << "the store refuses the stored condition";
    EXPECT_TRUE(dialogs_.shown[0].contains(u"\n\n列表和统计没有变。"_s));
    EXPECT_TRUE(shownWindow<Form12>()) << "for the user to mend the condition";
}

TEST_F(Form12Test, ARunShowsItsDayAndStopsBetweenDays) {
    openWithHistory();
    QStringList captions;
    QObject::connect(form_, &QWidget::windowTitleChanged,
                     [&](const QString& caption) { captions << caption; });
    const struct {
        std::function<void()> act;
        QString day;  // the last one
        QString stop;
    } cases[] = {
        {[] {}, u"2017-05-03"_s, u"停止"_s},
        {[&] { button(u"stop"_s)->click(); }, u"2017-05-02"_s, u"正在停止…"_s},
        {[&] { QTest::keyClick(form_.data(), Qt::Key_Escape); }, u"2017-05-02"_s, u"正在停止…"_s},
        {[&] {
             button(u"Command3"_s)->setEnabled(true);
             EXPECT_THROW(button(u"Command3"_s)->click(), OperationError) << "a second run";
         },
         u"2017-05-03"_s, u"停止"_s},
    };
    for (const auto& it : cases) {
        pump_.onRun = [&] {
            for (const QString& name :
                 {u"Command1"_s, u"Command4"_s, u"Command9"_s, u"Command6"_s}) {
                EXPECT_FALSE(button(name)->isEnabled());
            }
            EXPECT_FALSE(child<QAction>(form_, u"删除一个"_s)->isEnabled());
            EXPECT_EQ(label(u"Label2"_s), QString()) << "words of the run before";
            it.act();
            EXPECT_EQ(button(u"stop"_s)->text(), it.stop);
            EXPECT_EQ(button(u"stop"_s)->isEnabled(), it.stop == u"停止"_s);
        };
        child<QLabel>(form_, u"Label2"_s)->setText(u"旧"_s);
        press(form_, u"Command1"_s);
        EXPECT_EQ(captions.mid(captions.size() - 2),
                  QStringList({u"计算到时间:"_s + it.day, u"题材选股"_s}));
        EXPECT_EQ(label(u"Label6"_s), it.day);
        EXPECT_TRUE(button(u"Command1"_s)->isEnabled());
        EXPECT_FALSE(button(u"stop"_s)->isEnabled());
    }
}

TEST_F(Form12Test, TheForwardReturnsEndAtTheStatementThatTheStoreRefuses) {
    openWithHistory();
    store_.addCode(u"SH000001"_s, u"指数"_s, 0, 0);
    store_.run({u"update dmb set temp=5"_s,
                u"insert into yejiyuyuejinqi(dm,todayriqi,errizhang) values"
                u"(null,'2016-04-01',3),('SH000001','2017-03-06',3)"_s});
    QString text;
    try {
        button(u"Command9"_s)->click();
    } catch (const StoreError& failure) {
        text = failureText(failure);
    }
    EXPECT_TRUE(text.contains(u"执行语句失败"_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"已经写入并保留：代码表重新开始的完成标记。"_s));
    EXPECT_EQ(label(u"Label2"_s) + label(u"Label3"_s), u"代码总数:2当前代码:"_s)
        << "the code without rows of its own was passed by";
    EXPECT_TRUE(button(u"Command9"_s)->isEnabled());
    store_.run({u"update dmb set temp=temp+1"_s});
    EXPECT_EQ(store_.rows(u"select temp from dmb"_s), QStringList(u"1"_s)) << "nothing is locked";
    EXPECT_EQ(store_.rows(u"select distinct errizhang from yejiyuyuejinqi"_s), QStringList(u"3"_s));
}

}  // namespace guanchao
