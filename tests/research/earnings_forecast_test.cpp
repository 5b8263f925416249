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
    }

    // Of the current record.
    QString row() {
        return store_.rows(u"select zhaiyao,guanzhudu from yejiyugao where rowid=2"_s).join(u' ');
    }

    TestStores store_;
    Globals globals_;
    FakeDialogs dialogs_;
    EarningsForecast forecast_{store_.stores, globals_, dialogs_,
                               [this] { dialogs_.shown << u"search"_s; }};
};

const QString attentionBox = u"修改关注度|请输入关注度，以方便查找自己最关心的股票。|0"_s;

TEST_F(EarningsForecastTest, EachEditSearchesAnewAtItsPlace) {
    const QString question = u"听涛阁| 确实要删除吗！"_s;
    const QString edited = u" 一\r\n二|7"_s;
    const auto typing = [this](const QString& text) {
        dialogs_.typed = text;
        forecast_.changeAttention();
    };
    const auto answering = [this](bool answer) {
        dialogs_.answer = answer;
        forecast_.remove();
    };
    // Each on what the former has left.
    const struct {
        std::function<void()> act;
        QStringList shown;
        QString row;
    } cases[] = {
        {[&] { typing(u"7"_s); },
         {attentionBox, u"观潮台|修改关注度''完成!"_s, u"search"_s},
         u"旧|7"_s},
        {[&] { typing(QString()); }, {attentionBox}, u"旧|7"_s},
        {[&] { EXPECT_THROW(typing(u"高"_s), StoreError); }, {attentionBox}, u"旧|7"_s},
        {[&] { forecast_.changeSummary(u" 一\r\n二"_s); },
         {u"search"_s, u"听涛阁|修改摘要完成!"_s},
         edited},
        {[&] { EXPECT_THROW(forecast_.changeSummary(u"it's"_s), StoreError); }, {}, edited},
        {[&] { answering(false); }, {question, u"观潮台| 已退出！"_s}, edited},
        {[&] { answering(true); }, {question, u"search"_s}, QString()},
    };
    for (const auto& it : cases) {
        dialogs_.shown.clear();
        it.act();
        EXPECT_EQ(dialogs_.shown, it.shown);
        EXPECT_EQ(row(), it.row);
    }
    EXPECT_EQ(store_.rows(u"select * from yejiyugao where zhaiyao='别'"_s).size(), 1);
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
    EXPECT_EQ(row(), u"新|1"_s);
    EXPECT_TRUE(dialogs_.shown.isEmpty());
}

TEST_F(EarningsForecastTest, AnExportWritesCodesAndNamesAnew) {
    const QString question =
        store_.folder() +
        u"自选股|自选业绩预告2017-01-05.txt|文本文档(*.txt)|ASP文件(*.asp)|VBS脚本(*.vbs)|"
        u"所有文件(*.*)"_s;
    ResultGrid grid;
    grid.setCols(3);
    grid.setRows(2);
    grid.setTextMatrix(1, 1, u" SH600519"_s);
    grid.setTextMatrix(1, 2, u" 某股 "_s);
    // What was told, and what stands in the file.
    const auto exported = [&](const ResultGrid& rows, const QString& picked) -> QString {
        dialogs_.picked = picked;
        dialogs_.shown.clear();
        forecast_.exportCodes(rows, {u"2016"_s, u" 13 "_s, u"5"_s});
        EXPECT_EQ(dialogs_.shown.takeFirst(), question);
        QFile file(picked);
        return dialogs_.shown.join(u' ') +
               (file.open(QIODevice::ReadOnly) ? textFromGbk(file.readAll()) : u" -"_s);
    };
    const QString done = u"操作提示|文件保存成功！"_s;
    const QString path = store_.folder() + u"a.txt"_s;
    EXPECT_EQ(exported(grid, u"  "_s), u" -"_s) << "nothing picked";
    EXPECT_EQ(exported(grid, path), done + u"SH600519\t某股\r\n"_s);
    EXPECT_EQ(exported(ResultGrid(), path), done) << "an empty list leaves an empty file";
    EXPECT_THROW(exported(grid, store_.folder() + u"none/a.txt"_s), OperationError);
}

}  // namespace guanchao
