#include "exchange/text_import.h"

#include <QScopeGuard>
#include <chrono>
#include <random>

#include "formats/gbk.h"
#include "store/store_error.h"
#include "tests/exchange/exchange_fixture.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

class TextImportTest : public ExchangeFixture {
protected:
    TextImportTest() {
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 1, 1);
        store_.addCode(u"SZ000001"_s, u"平安银行"_s, 1, 1);
        source_.path = store_.folder() + u"主题投资.txt"_s;
        source_.firstSeparator = u"TAB键"_s;
        source_.secondSeparator = u"TAB键"_s;
    }

    void write(const QByteArray& bytes) {
        QFile file(source_.path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
    }

    // The pairs of an import of the text, in the order of their insertion.
    QStringList pairsOf(const QString& text) {
        write(gbkFromText(text));
        execute(store_.stores.main, {u"delete from dzhzhuti"_s});
        told();
        import_.importText(source_);
        const QStringList pairs =
            store_.rows(u"select zhutiname,dm,jc from dzhzhuti order by rowid"_s);
        EXPECT_EQ(
            told(),
            QStringList{u"观潮台|导入文本主题库完成，共导入新的数据：%1条"_s.arg(pairs.size())});
        return pairs;
    }

    // The grid's rows of a preview, each as its cells joined by "|".
    QStringList previewOf(const QString& text) {
        write(gbkFromText(text));
        told();
        import_.preview(source_, grid_);
        QStringList rows;
        for (int row = 1; row < grid_.rows(); ++row) {
            rows << grid_.textMatrix(row, 0) + u'|' + grid_.textMatrix(row, 1) + u'|' +
                        grid_.textMatrix(row, 2);
        }
        return rows;
    }

    QStringList stamp() { return store_.rows(u"select xiugaizhutitime from tempcanshu"_s); }

    TextSource source_;
    ResultGrid grid_;
    TextImport import_{store_.stores, globals_, clock_, dialogs_, run_};
};

TEST_F(TextImportTest, WhatIsMissingIsToldBeforeALineIsRead) {
    const QString path = source_.path;
    const auto both = [this] {
        import_.preview(source_, grid_);
        import_.importText(source_);
        return told();
    };
    const auto twice = [](const QString& text) { return QStringList({text, text}); };
    EXPECT_EQ(both(), twice(u"观潮台|文本主题库没找到!"_s + path));
    write("x");
    source_.secondSeparator.clear();
    EXPECT_EQ(both(), twice(u"观潮台|没有选择第二部分的分隔符号!"_s + path));
    source_.firstSeparator.clear();
    EXPECT_EQ(both(), twice(u"观潮台|没有选择主题名和代码的分隔符号!"_s + path));
    EXPECT_TRUE(seen_.isEmpty());
    source_.firstSeparator = source_.secondSeparator = u","_s;
    source_.path = store_.folder();
    EXPECT_THROW(import_.preview(source_, grid_), OperationError) << "a folder";
    EXPECT_THROW(import_.importText(source_), OperationError);
}

TEST_F(TextImportTest, CodeFirstLines) {
    const QString n20(20, u'名');
    const struct {
        QString line;
        QStringList pairs;
    } cases[] = {
        {u"600000\t银行\t 金融 "_s, {u"银行|SH600000|浦发银行"_s, u"金融|SH600000|浦发银行"_s}},
        {u"sz000001\t银行"_s, {u"银行|SZ000001|平安银行"_s}},
        {u"sh600000.ss\t银行"_s, {u"银行|SH600000|浦发银行"_s}},
        {u"600000\t银行\t银行"_s, {u"银行|SH600000|浦发银行"_s}},
        {u"600000\t2015年\t2015\t1概念\t概念\t10大\t9.9折"_s,
         {u"1概念|SH600000|浦发银行"_s, u"概念|SH600000|浦发银行"_s, u"9.9折|SH600000|浦发银行"_s}},
        {u"600000\t"_s + n20 + u"\t长"_s + n20, {n20 + u"|SH600000|浦发银行"_s}},
        {u"600519\t白酒"_s, {}},
        {u" 600000\t银行"_s, {}},
        {u"银行\t600000"_s, {}},
        {u"600000 银行"_s, {}},
        {u"600000\t"_s, {}},
        {u"600000\t银行\t\t金融"_s,
         {u"银行|SH600000|浦发银行"_s, u"|SH600000|浦发银行"_s, u"金融|SH600000|浦发银行"_s}},
        {u"600000\tit's\t银行"_s, {u"银行|SH600000|浦发银行"_s}},
        {u"6'0000\t银行"_s, {}},
        {u"600000\ta');delete from dmb;--\t银行"_s, {u"银行|SH600000|浦发银行"_s}},
    };
    for (const auto& it : cases) {
        EXPECT_EQ(pairsOf(it.line), it.pairs) << it.line.toStdString();
    }
}

TEST_F(TextImportTest, ThemeFirstLines) {
    source_.codeFirst = false;
    const struct {
        QString line;
        QStringList pairs;
    } cases[] = {
        {u"银行\t600000\tsz000001\t 300999 "_s,
         {u"银行|SH600000|"_s, u"银行|sz000001|"_s, u"银行|SZ300999|"_s}},
        {u" 银行\t600000"_s, {u" 银行|SH600000|"_s}},
        {u"银行\t600000\tabc\t000001"_s, {u"银行|SH600000|"_s}},
        {u"银行\t600000\t\t000001"_s, {u"银行|SH600000|"_s}},
        {u"2015\t600000"_s, {}},
        {u"2015年\t600000"_s, {u"2015年|SH600000|"_s}},
        {QString(20, u'名') + u"\t6000000"_s, {QString(20, u'名') + u"|6000000|"_s}},
        {QString(21, u'名') + u"\t600000"_s, {}},
        {u"it's\t600000\r银行\t6'0000\t000001"_s, {u"银行|SZ000001|"_s}},
        {u"银行\t600000\r银行\t600000\r\n酒\t600519"_s, {u"银行|SH600000|"_s, u"酒|SH600519|"_s}},
    };
    for (const auto& it : cases) {
        EXPECT_EQ(pairsOf(it.line), it.pairs) << it.line.toStdString();
    }
    source_.firstSeparator = u"中文分号："_s;
    source_.secondSeparator = u"--"_s;
    EXPECT_EQ(pairsOf(u"银行：600000--000001"_s),
              QStringList({u"银行|SH600000|"_s, u"银行|SZ000001|"_s}));
    source_.firstSeparator = u"=>"_s;
    EXPECT_EQ(pairsOf(u"银行=>600000"_s), QStringList()) << "the tail stays in the second part";
}

TEST_F(TextImportTest, ASecondImportAddsNothingAndStampsNothing) {
    EXPECT_EQ(pairsOf({}), QStringList());
    EXPECT_EQ(stamp(), QStringList{u"2026-11-01 08:00:00"_s});
    clock_.moment = QDateTime(QDate(2026, 11, 24), QTime(9, 5, 7, 999));
    seen_.clear();
    EXPECT_EQ(pairsOf(u"600000\t银行"_s).size(), 1);
    EXPECT_EQ(seen_.value(1).jc, u"浦发银行"_s);
    EXPECT_EQ(seen_.value(1).total, 1);
    EXPECT_EQ(store_.rows(u"select ztktime,xiangguandu,guanzhudu from dzhzhuti"_s),
              QStringList{u"2026-11-24 09:05:07|5|0"_s});
    EXPECT_EQ(stamp(), QStringList{u"2026-11-24 09:05:07"_s});
    clock_.moment = clock_.moment.addDays(1);
    import_.importText(source_);
    EXPECT_EQ(told(), QStringList{u"观潮台|导入文本主题库完成，共导入新的数据：0条"_s});
    EXPECT_EQ(stamp(), QStringList{u"2026-11-24 09:05:07"_s});
}

TEST_F(TextImportTest, BrokenLinesAreLeftOutAndNamed) {
    write(gbkFromText(u"600000\t银"_s) + "\xFF\r\n" + gbkFromText(u"600000\t行\r\n"_s) + "x\xD2");
    import_.importText(source_);
    EXPECT_EQ(told(), QStringList({u"观潮台|导入文本主题库完成，共导入新的数据：1条"_s,
                                   u"观潮台|下列行有无法识别的字节，没有导入：\n第 1、3 行"_s}));
    EXPECT_EQ(store_.rows(u"select zhutiname from dzhzhuti"_s), QStringList{u"行"_s});
}

TEST_F(TextImportTest, AStoreThatIsLockedOrClosedTakesNothing) {
    write("600000\tX\r");
    pump_.onRun = [this] { run_.cancel(); };
    import_.importText(source_);
    EXPECT_EQ(told(), QStringList{u"观潮台|导入已停止，没有导入任何数据。"_s});
    EXPECT_EQ(store_.rows(u"select count(*) from dzhzhuti"_s), QStringList{u"0"_s});
    EXPECT_EQ(stamp(), QStringList{u"2026-11-01 08:00:00"_s});
    {
        Connection other = store_.stores.main.open();
        other.execute(u"begin immediate"_s);
        Connection::setBusyTimeout(std::chrono::milliseconds(1));
        const auto restore =
            qScopeGuard([] { Connection::setBusyTimeout(std::chrono::seconds(5)); });
        EXPECT_THROW(import_.importText(source_), StoreError);
        EXPECT_EQ(globals_.hqmang, 0);
    }
    QFile::remove(store_.stores.main.path);
    EXPECT_THROW(import_.importText(source_), StoreError);
    EXPECT_FALSE(run_.running());
}

TEST_F(TextImportTest, ThePreviewShowsTheFirstLine) {
    const QString n21(21, u'名');
    const struct {
        bool codeFirst;
        QString text;
        QStringList rows, told;
    } cases[] = {
        {true,
         u"sh600000\t银行\t2015\t 2015年 \r000001\tx"_s,
         {u"1|SH600000|银行"_s, u"2|SH600000|2015年"_s, u"||"_s},
         {}},
        {true,
         u"600000\t"_s + n21 + u"\t银行"_s,
         {u"1|SH600000|"_s + n21, u"2|SH600000|银行"_s},
         {u"主题名称太长了!名称："_s + n21}},
        {true, u"830799.BJ\t银行"_s, {}, {u"代码不正确!代码：830799"_s}},
        {true, u"600519\t白酒"_s, {}, {u"代码不存在!代码：SH600519"_s}},
        {true, u"600000 银行"_s, {}, {u"第一行没有找到间隔!间隔：\t"_s}},
        {true, {}, {}, {u"第一行没有找到间隔!间隔：\t"_s}},
        {false, u"银行\t600000\tsz000001"_s, {u"1|SH600000|银行"_s, u"2|sz000001|银行"_s}, {}},
        {false,
         u"银行\t600000\t白酒\t000001"_s,
         {u"1|SH600000|银行"_s, u"||"_s, u"||"_s},
         {u"代码不正确!代码：白酒"_s}},
        {false, u"2015\t600000"_s, {}, {}},
        {false, n21 + u"\t600000"_s, {u"1|SH600000|"_s + n21}, {u"主题名称太长了!名称："_s + n21}},
    };
    for (const auto& it : cases) {
        source_.codeFirst = it.codeFirst;
        EXPECT_EQ(previewOf(it.text), it.rows) << it.text.toStdString();
        QStringList expected;
        for (const QString& text : it.told) {
            expected << u"观潮台|"_s + text;
        }
        EXPECT_EQ(told(), expected) << it.text.toStdString();
        EXPECT_EQ(grid_.textMatrix(0, 0) + grid_.textMatrix(0, 1) + grid_.textMatrix(0, 2),
                  u"序号代码主题名称"_s);
    }
    EXPECT_THROW(previewOf(u"600000\tx"_s) + (source_.codeFirst = true, previewOf(u"6'\tx"_s)),
                 StoreError);
}

// Texts made of what matters to the rules, and of any bytes. Whatever comes, nothing but whole
// pairs of a name and a code of the rules is in the store, and each import of the same file again
// adds nothing.
TEST_F(TextImportTest, RandomFilesLeaveWholePairsOnly) {
    std::mt19937 random(20261124);
    const auto pick = [&](int below) { return static_cast<int>(random() % unsigned(below)); };
    const QList<QByteArray> parts = {"\t",
                                     "\t",
                                     "\r",
                                     "\r\n",
                                     "\n",
                                     ",",
                                     " ",
                                     "600000",
                                     "000001",
                                     "sh600000",
                                     "SZ000001.X",
                                     "'",
                                     "\"",
                                     ";",
                                     "--",
                                     "a",
                                     "\0",
                                     "999",
                                     "12",
                                     "\xFF",
                                     "\x81",
                                     "\xEF\xBB\xBF",
                                     "x'y",
                                     gbkFromText(u"银行"_s),
                                     gbkFromText(u"：、，"_s),
                                     u"概念"_s.toUtf8(),
                                     QByteArray(30, 'n')};
    const QStringList separators = {u"TAB键"_s, u"英文逗号,"_s, u"\t6"_s, u"'"_s, u"中文分号："_s};
    for (int at = 0; at < 400; ++at) {
        QByteArray bytes;
        for (int length = pick(120); length > 0; --length) {
            bytes += pick(20) == 0 ? QByteArray(1, static_cast<char>(pick(256)))
                                   : parts[pick(static_cast<int>(parts.size()))];
        }
        write(bytes);
        source_.codeFirst = pick(2) == 0;
        source_.firstSeparator = separators[pick(5)];
        source_.secondSeparator = separators[pick(5)];
        ASSERT_NO_THROW(import_.preview(source_, grid_)) << bytes.toHex().toStdString();
        for (const bool again : {false, true}) {
            told();
            ASSERT_NO_THROW(import_.importText(source_)) << bytes.toHex().toStdString();
            EXPECT_TRUE(!again || told().first().endsWith(u"：0条"_s))
                << bytes.toHex().toStdString();
        }
    }
    EXPECT_EQ(store_.rows(u"select * from dzhzhuti where length(zhutiname)>20 or length(dm)>8 or"
                          u" dm is null or zhutiname is null or ztktime!='2026-11-24 10:00:00' or"
                          u" (substr(dm,1,1) not in ('6','3','0') and upper(substr(dm,1,2)) not in"
                          u" ('SH','SZ'))"_s),
              QStringList());
    EXPECT_EQ(store_.rows(u"select zhutiname,dm from dzhzhuti group by zhutiname,dm having"
                          u" count(*)>1"_s),
              QStringList());
    EXPECT_EQ(store_.rows(u"select count(*) from dmb"_s), QStringList{u"2"_s});
    EXPECT_NE(store_.rows(u"select count(*) from dzhzhuti"_s), QStringList{u"0"_s});
}

}  // namespace guanchao
