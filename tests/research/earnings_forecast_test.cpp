#include "research/earnings_forecast.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "formats/gbk.h"
#include "store/store_error.h"
#include "tests/support/fakes.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

class EarningsForecastTest : public ::testing::Test {
protected:
    EarningsForecastTest() {
        store_.run({u"insert into yejiyugao(rowid,zhaiyao,guanzhudu) values(2,'旧',1)"_s,
                    u"insert into yejiyugao(rowid,zhaiyao,guanzhudu) values(3,'别',1)"_s});
        globals_.dangqianjilu = 2;
        globals_.yingyongmulu = store_.folder();
        dialogs_.typed = u"7"_s;
    }

    QStringList rows() {
        return store_.rows(u"select rowid,zhaiyao,guanzhudu from yejiyugao order by rowid"_s);
    }

    TestStores store_;
    Globals globals_;
    FakeDialogs dialogs_;
    EarningsForecast forecast_{store_.stores, globals_, dialogs_,
                               [this] { dialogs_.shown << u"search"_s; }};
};

const QString attentionBox = u"修改关注度|请输入关注度，以方便查找自己最关心的股票。|0"_s;

TEST_F(EarningsForecastTest, EachEditSearchesAnewAtItsPlace) {
    const struct {
        const char* name;
        std::function<void()> act;
        QStringList shown, rows;
    } cases[] = {
        {"summary",
         [&] { forecast_.changeSummary(u" 一\r\n二"_s); },
         {u"search"_s, u"听涛阁|修改摘要完成!"_s},
         {u"2| 一\r\n二|1"_s, u"3|别|1"_s}},
        {"attention",
         [&] { forecast_.changeAttention(); },
         {attentionBox, u"观潮台|修改关注度''完成!"_s, u"search"_s},
         {u"2| 一\r\n二|7"_s, u"3|别|1"_s}},
        {"attention cancelled",
         [&] {
             dialogs_.typed.clear();
             forecast_.changeAttention();
         },
         {attentionBox},
         {u"2| 一\r\n二|7"_s, u"3|别|1"_s}},
        {"removal refused",
         [&] {
             dialogs_.answer = false;
             forecast_.remove();
         },
         {u"听涛阁| 确实要删除吗！"_s, u"观潮台| 已退出！"_s},
         {u"2| 一\r\n二|7"_s, u"3|别|1"_s}},
        {"removal",
         [&] {
             dialogs_.answer = true;
             forecast_.remove();
         },
         {u"听涛阁| 确实要删除吗！"_s, u"search"_s},
         {u"3|别|1"_s}},
        {"no such row",
         [&] { forecast_.changeSummary(u"无"_s); },
         {u"search"_s, u"听涛阁|修改摘要完成!"_s},
         {u"3|别|1"_s}},
    };
    for (const auto& it : cases) {
        dialogs_.shown.clear();
        it.act();
        EXPECT_EQ(dialogs_.shown, it.shown) << it.name;
        EXPECT_EQ(rows(), it.rows) << it.name;
    }
}

TEST_F(EarningsForecastTest, ARefusedEditWritesNothingAndSaysNothing) {
    const QStringList before = rows();
    EXPECT_THROW(forecast_.changeSummary(u"it's"_s), StoreError);
    dialogs_.typed = u"高"_s;
    EXPECT_THROW(forecast_.changeAttention(), StoreError);
    EXPECT_EQ(dialogs_.shown, QStringList{attentionBox});
    EXPECT_EQ(rows(), before);
}

TEST_F(EarningsForecastTest, ARefusedSearchTellsThatTheEditStays) {
    EarningsForecast forecast(store_.stores, globals_, dialogs_, [this] {
        const Activity activity(u"搜索"_s, u"列表没有变。"_s);
        store_.stores.main.open().execute(u"nonsense"_s);
    });
    try {
        forecast.changeSummary(u"新"_s);
        FAIL() << "the search fails";
    } catch (const StoreError& failure) {
        EXPECT_EQ(failure.remains(), u"列表没有变。\n已经写入并保留：摘要。"_s);
    }
    EXPECT_EQ(rows().first(), u"2|新|1"_s);
    EXPECT_TRUE(dialogs_.shown.isEmpty());
}

TEST_F(EarningsForecastTest, AnExportWritesCodesAndNamesAnew) {
    const QString question =
        store_.folder() +
        u"自选股|自选业绩预告2017-01-05.txt|文本文档(*.txt)|ASP文件(*.asp)|VBS脚本(*.vbs)|"
        u"所有文件(*.*)"_s;
    const DateTexts december{u"2016"_s, u" 13 "_s, u"5"_s};
    ResultGrid grid;
    grid.setCols(3);
    grid.setRows(3);
    int row = 1;
    for (const QString& code : {u" SH600519"_s, u"SZ002460 "_s}) {
        grid.setTextMatrix(row, 1, code);
        grid.setTextMatrix(row++, 2, u" 某股 "_s);
    }
    for (const QString& blank : {QString(), u"  "_s}) {
        dialogs_.picked = blank;
        forecast_.exportCodes(grid, december);
    }
    EXPECT_EQ(dialogs_.shown, QStringList({question, question})) << "nothing picked";

    dialogs_.picked = store_.folder() + u"a.txt"_s;
    QFile file(dialogs_.picked);
    const QString done = u"操作提示|文件保存成功！"_s;
    const auto content = [&] {
        EXPECT_EQ(dialogs_.shown.takeLast(), done);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        file.close();
        return textFromGbk(bytes);
    };
    forecast_.exportCodes(grid, december);
    EXPECT_EQ(content(), u"SH600519\t某股\r\nSZ002460\t某股\r\n"_s);
    forecast_.exportCodes(ResultGrid(), december);
    EXPECT_EQ(content(), QString()) << "an empty list leaves an empty file";

    dialogs_.picked = store_.folder() + u"none/a.txt"_s;
    EXPECT_THROW(forecast_.exportCodes(grid, december), OperationError);
    EXPECT_NE(dialogs_.shown.last(), done);
}

}  // namespace guanchao
