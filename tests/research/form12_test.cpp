#include "research/form12.h"

#include <QPlainTextEdit>
#include <QThreadPool>
#include <optional>

#include "formats/gbk.h"
#include "research/form37.h"
#include "research/gain_histogram.h"
#include "tests/support/test_history.h"
#include "tests/support/window_test.h"

namespace guanchao {

class Form12Test : public WindowTest {
protected:
    Form12Test() {
        for (const QString& stock : {u"'2016-04-01','SH600519'"_s, u"'2016-04-05','SZ002460'"_s}) {
            store_.run(
                {u"insert into xuanticaigu values("_s + stock +
                 u",'某股','白酒',11,11,11,10,11,22,0,10,300,200,12,12.6,12.3,11.4,13.2,0,150)"_s});
        }
        store_.run({u"insert into xuanticai select riqi,ticai,3.5,5,1,8,0.25,10 from xuanticaigu"_s,
                    u"insert into yejiyugao(rowid,zhaiyao,guanzhudu) values(2,'旧',1)"_s});
        globals_.yingyongmulu = store_.folder();
        services_.sitepage.host = u"http://page"_s;
        clock_.moment.setDate(QDate(2026, 12, 5));
    }

    void openSized() {
        open<Form12>()->resize(1400, 900);
        QApplication::processEvents();
    }
    void openWithAllRows() {
        openSized();
        box(u"Text8"_s)->clear();
        runToItsEnd(u"Command2"_s);
        ASSERT_EQ(grid().rows(), 3);
    }
    // A run or a search.
    void untilItsEnd() {
        until([this] {
            return !button(u"stop"_s)->isEnabled() && button(u"stop"_s)->text() == u"停止"_s;
        });
    }
    void runToItsEnd(const QString& command) {
        click(command);
        untilItsEnd();
    }
    // A run over a history without themes only shows its progress.
    void openWithHistory() {
        writeQuietHistory(stores_, store_.folder());
        openSized();
    }

    QPlainTextEdit* box(const QString& name) { return find<QPlainTextEdit>(name); }
};

// The stored condition has a line's end inside a word; the store must get both its characters.
TEST_F(Form12Test, TheStoredConditionReachesTheStoreToTheLetter) {
    openSized();
    EXPECT_TRUE(box(u"Text8"_s)->toPlainText().contains(u"开盘\n涨<2"_s));
    const QString rule = box(u"Text6"_s)->toPlainText();
    EXPECT_TRUE(rule.startsWith(u" and  ticaizhang>0 and"_s));
    runToItsEnd(u"Command2"_s);
    EXPECT_TRUE(failures_.statements.join(u' ').contains(
        u")=date(xuanticaigu.riqi) and  ticaizhang>0 and  zhangtinshu>zonggeshu/4+2 and"
        u" yizishu>-1 and \r\ndapanzhang>-10 and touguzhangfu>9 and 股涨幅>9.5  and 量比>0"
        u"  and  开盘\r\n涨<2  and  前3涨<0  and  前10涨<0\r\n  order by"_s));
    EXPECT_EQ(box(u"Text6"_s)->toPlainText(), rule) << "no score takes its place";
    globals_.dangqianjilu = 2;
    runToItsEnd(u"Command6"_s);
    EXPECT_TRUE(failures_.told.last().endsWith(u"\n已经写入并保留：摘要。"_s));
}

TEST_F(Form12Test, ARefusedConditionIsKeptAndShowsWhereItIsWrong) {
    openSized();
    runToItsEnd(u"Command2"_s);
    EXPECT_EQ(box(u"Text8"_s)->textCursor().selectedText(), u"涨"_s);
    click(u"conditions"_s);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    chooseEntry(*menu, u"所有选出的股票"_s);
    menu->close();
    runToItsEnd(u"Command2"_s);
    EXPECT_EQ(grid().rows(), 3);
    click(u"figuresShown"_s);
    const ResultGrid& figures = grid(u"figures"_s);
    EXPECT_EQ(rowText(figures, 1), u"1|当日|2|100.00|10.00|10.00|10.00|10.00"_s);
    const QString writes = u" and sqlcipher_export('temp') is null"_s;
    box(u"Text8"_s)->setPlainText(writes);
    runToItsEnd(u"Command2"_s);
    EXPECT_EQ(grid().rows(), 3) << "the list stays";
    EXPECT_EQ(failures_.texts.size(), 2);
    openSized();
    EXPECT_EQ(box(u"Text8"_s)->toPlainText(), writes);
}

// In columns of 2 percent, those at both ends open.
TEST(GainHistogram, CountsEachGainOnce) {
    const std::vector<int> counts = histogramOf({-95, -20, -0.01, 0, 1.99, 2, 19.9, 20, 300});
    QStringList filled;
    for (size_t range = 0; range < counts.size(); ++range) {
        if (counts[range] > 0) {
            filled << rangeWords(range) + u':' + QString::number(counts[range]);
        }
    }
    EXPECT_EQ(filled.join(u' '),
              u"-20% 以下:1 -20%～-18%:1 -2%～0%:1 0%～2%:2 2%～4%:1 18%～20%:1 20% 以上:2"_s);
}

TEST_F(Form12Test, EachEditOfTheMarkedRecordSearchesAnewAtItsPlace) {
    store_.run({u"insert into yejiyugao(rowid,zhaiyao) values(3,'别')"_s});
    openWithAllRows();
    grid().setTextMatrix(1, 21, u"7"_s);
    clickCell(view(), 1, 1);
    EXPECT_EQ(globals_.dangqianjilu, 7);
    QTest::keyClick(&view(), Qt::Key_Down);
    EXPECT_EQ(globals_.dangqianjilu, 2) << "2.44";
    EXPECT_EQ(globals_.dangqiandm + text(u"Text1"_s) + text(u"Text2"_s), u"SH600519SH600519白酒"_s);

    const QString summary = u"Command6"_s, attention = u"修改关注度"_s, removal = u"删除一个"_s;
    const QString edited = u" 一\r\n二|7"_s;
    const std::tuple<QString, QString, bool, bool, QString> cases[] = {
        {attention, u"7"_s, true, true, u"旧|7"_s},
        {attention, {}, true, false, u"旧|7"_s},
        {attention, u"高"_s, true, false, u"旧|7"_s},
        {attention, u"1 where 1"_s, true, false, u"旧|7"_s},
        {summary, u" 一\n二"_s, true, true, edited},
        {summary, u"it's"_s, true, true, u"it's|7"_s},
        {removal, {}, false, false, u"it's|7"_s},
        {removal, {}, true, true, {}},
    };
    for (const auto& [control, typed, answer, searched, row] : cases) {
        dialogs_.answer = answer;
        dialogs_.typed = typed;
        box(u"Text6"_s)->setPlainText(typed);
        control == summary ? click(summary) : trigger(control);
        untilItsEnd();
        EXPECT_TRUE(failures_.texts.isEmpty());
        EXPECT_EQ(box(u"Text6"_s)->toPlainText().startsWith(u"总次数:2"_s), searched);
        EXPECT_EQ(
            store_.rows(u"select zhaiyao,guanzhudu from yejiyugao where rowid=2"_s).join(u' '),
            row);
    }
    EXPECT_EQ(store_.rows(u"select zhaiyao from yejiyugao"_s), QStringList{u"别"_s});
}

TEST_F(Form12Test, AnExportWritesCodesAndNamesAnew) {
    openWithAllRows();
    const auto exportTo = [this](const QString& path) {
        dialogs_.picked = path;
        trigger(u"导出自选股"_s);
    };
    exportTo(u"  "_s);
    EXPECT_EQ(dialogs_.shown.size(), 1) << "nothing picked";
    const QString path = store_.folder() + u"a.txt"_s;
    writeFile(path, QByteArray(1000, 'x'));
    exportTo(path);
    EXPECT_EQ(dialogs_.shown.last(), u"操作提示|文件保存成功！"_s);
    EXPECT_EQ(textFromGbk(contentOf(path)), u"SZ002460\t某股\r\nSH600519\t某股\r\n"_s);
    exportTo(store_.folder() + u"none/a.txt"_s);
    EXPECT_EQ(failures_.texts.size(), 1);
}

// A transaction holds the scan at the end of its first day.
TEST_F(Form12Test, ARunShowsItsDayAndStopsBetweenDays) {
    openWithHistory();
    // The last day, and the words of the button.
    const std::tuple<std::function<void()>, QString, QString> cases[] = {
        {[] {}, u"2017-05-03"_s, u"停止"_s},
        {[&] { click(u"stop"_s); }, u"2017-05-02"_s, u"正在停止…"_s},
        {[&] { QTest::keyClick(form_.data(), Qt::Key_Escape); }, u"2017-05-02"_s, u"正在停止…"_s},
        {[&] {
             button(u"Command3"_s)->setEnabled(true);
             click(u"Command3"_s);
             EXPECT_EQ(failures_.texts.size(), 1) << "a second run";
         },
         u"2017-05-03"_s, u"停止"_s},
    };
    for (const auto& [act, day, stop] : cases) {
        Connection store = store_.stores.main.open();
        std::optional<Transaction> lock(store);
        press(form_, u"Command1"_s);
        until([this] { return label(u"Label6"_s) == u"2017-05-02"_s; });
        for (const QString& name : {u"Command1"_s, u"Command4"_s, u"Command9"_s, u"Command6"_s}) {
            EXPECT_FALSE(button(name)->isEnabled());
        }
        EXPECT_FALSE(find<QAction>(u"删除一个"_s)->isEnabled());
        EXPECT_EQ(find<QProgressBar>(u"progress"_s)->maximum(), 2);
        act();
        EXPECT_EQ(button(u"stop"_s)->text(), stop);
        EXPECT_EQ(button(u"stop"_s)->isEnabled(), stop == u"停止"_s);
        lock.reset();
        untilItsEnd();
        EXPECT_EQ(label(u"Label6"_s), day);
        EXPECT_EQ(label(u"Label3"_s), day.endsWith(u'3') ? u"完成：2 天，0 个题材，0 行股票"_s
                                                         : u"已停止：1 天，0 个题材，0 行股票"_s);
        EXPECT_TRUE(button(u"Command1"_s)->isEnabled());
    }
}

TEST_F(Form12Test, ASearchIsStoppedAndLeavesTheList) {
    openWithAllRows();
    box(u"Text8"_s)
        ->setPlainText(
            u" and 1=(with recursive n(i) as (select 1 union all select i+1 from n)"
            u" select count(*) from n)"_s);
    click(u"Command2"_s);
    EXPECT_FALSE(button(u"Command2"_s)->isEnabled() || button(u"Command6"_s)->isEnabled());
    EXPECT_TRUE(button(u"Command1"_s)->isEnabled());
    click(u"stop"_s);
    EXPECT_TRUE(button(u"Command2"_s)->isEnabled());
    QThreadPool::globalInstance()->waitForDone();
    EXPECT_EQ(grid().rows(), 3);
    EXPECT_TRUE(failures_.texts.isEmpty());
}

TEST_F(Form12Test, TheForwardReturnsEndAtTheStatementThatTheStoreRefuses) {
    openWithHistory();
    store_.addCode(u"SH000001"_s, u"指数"_s, 0, 0);
    store_.run({u"update dmb set temp=5"_s,
                u"insert into yejiyuyuejinqi(dm,todayriqi,errizhang) values"
                u"(null,'2016-04-01',3),('SH000001','2017-03-06',3)"_s});
    runToItsEnd(u"Command9"_s);
    until([] { return shownWindow<Form37>(); });
    EXPECT_TRUE(failures_.told.isEmpty()) << "one box, not two";
    const QString text = dialogs_.shown.value(0);
    EXPECT_TRUE(holds(text, u"执行语句失败"_s));
    EXPECT_TRUE(holds(text, u"已经写入并保留：代码表重新开始的完成标记。"_s));
    EXPECT_EQ(label(u"Label2"_s) + label(u"Label3"_s), u"代码总数:2当前代码:"_s)
        << "the code without rows of its own was passed by";
    EXPECT_TRUE(button(u"Command9"_s)->isEnabled());
    store_.run({u"update dmb set temp=temp+1"_s});
    EXPECT_EQ(store_.rows(u"select temp from dmb"_s), QStringList(u"1"_s)) << "nothing is locked";
    EXPECT_EQ(store_.rows(u"select distinct errizhang from yejiyuyuejinqi"_s), QStringList(u"3"_s));
}

}  // namespace guanchao
