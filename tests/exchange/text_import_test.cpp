#include "exchange/text_import.h"

#include "formats/gbk.h"
#include "tests/exchange/exchange_fixture.h"

namespace guanchao {

class TextImportTest : public ExchangeFixture {
protected:
    TextImportTest() {
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 1, 1);
        store_.addCode(u"SZ000001"_s, u"平安银行"_s, 1, 1);
        source_.path = store_.folder() + u"主题投资.txt"_s;
        source_.firstSeparator = u"TAB键"_s;
        source_.secondSeparator = u"TAB键"_s;
    }

    void write(const QByteArray& bytes) { writeFile(source_.path, bytes); }

    // The pairs of an import of the text, in the order of their insertion.
    QStringList pairsOf(const QString& text) {
        write(gbkFromText(text));
        execute(store_.stores.main, {u"delete from dzhzhuti"_s});
        told();
        endOf(import_.importText(source_, {}));
        const QStringList pairs =
            store_.rows(u"select zhutiname,dm,jc from dzhzhuti order by rowid"_s);
        EXPECT_EQ(told().join(u'/').section(u'\n', 0, 0),
                  u"观潮台|导入文本主题库完成，共导入新的数据：%1条"_s.arg(pairs.size()));
        return pairs;
    }

    TextSource source_;
    TextImport import_{store_.stores, clock_, dialogs_, run_};
};

TEST_F(TextImportTest, WhatIsMissingIsToldBeforeALineIsRead) {
    const QString path = source_.path;
    const auto refusal = [this] {
        import_.preview(source_, grid_);
        endOf(import_.importText(source_, {}));
        const QStringList words = told();
        EXPECT_EQ(words.value(0), words.value(1)) << "preview and import agree";
        return words.value(0);
    };
    EXPECT_EQ(refusal(), u"观潮台|文本主题库没找到!"_s + path);
    write("x");
    source_.secondSeparator.clear();
    EXPECT_EQ(refusal(), u"观潮台|没有选择第二部分的分隔符号!"_s + path);
    source_.firstSeparator.clear();
    EXPECT_EQ(refusal(), u"观潮台|没有选择主题名和代码的分隔符号!"_s + path);
    EXPECT_TRUE(seen_.isEmpty());
    source_.firstSeparator = source_.secondSeparator = u","_s;
    source_.path = store_.folder();
    EXPECT_THROW(endOf(import_.importText(source_, {})), OperationError) << "a folder";
}

TEST_F(TextImportTest, CodesAreCutTestedAndGivenTheirMarket) {
    const std::pair<QString, QString> wellFormed[] = {
        {u"600000"_s, u"SH600000"_s},      {u"000001"_s, u"SZ000001"_s},
        {u"300750"_s, u"SZ300750"_s},      {u"sz000001"_s, u"sz000001"_s},
        {u"SH600000.SS"_s, u"SH600000"_s}, {u"600000.SH"_s, u"SH600000"_s},
        {u"Sh6000000"_s, u"SZSh6000"_s},   {u"6000000"_s, u"6000000"_s},
        {u"SH6000"_s, u"SZSH6000"_s},      {u"6"_s, u"6"_s}};
    for (const auto& [typed, code] : wellFormed) {
        EXPECT_EQ(normaliseCode(typed).code, code);
        EXPECT_TRUE(normaliseCode(typed).wellFormed) << typed.toStdString();
    }
    for (const QString& bad : {u"830799"_s, QString(), u" 600000"_s, u"HK00700"_s}) {
        EXPECT_FALSE(normaliseCode(bad).wellFormed) << bad.toStdString();
    }
}

TEST_F(TextImportTest, CodeFirstLines) {
    const QString n20(20, u'名');
    // A line and its pairs; @ is the stock.
    const std::pair<QString, QString> cases[] = {
        {u"600000\t银行\t 金融 "_s, u"银行@/金融@"_s},
        {u"sh600000.ss\t银行"_s, u"银行@"_s},
        {u"600000\t2015年\t2015\t1概念\t概念\t10大\t9.9折"_s, u"1概念@/概念@/9.9折@"_s},
        {u"600000\t"_s + n20 + u"\t长"_s + n20, n20 + u'@'},
        {u" 600000\t银行"_s, QString()},
        {u"600000\t银行\t\t金融"_s, u"银行@/@/金融@"_s},
        {u"600000\ta');delete from x;\t银行"_s, u"a');delete from x;@/银行@"_s},
    };
    for (const auto& [line, pairs] : cases) {
        EXPECT_EQ(pairsOf(line).join(u'/').replace(u"|SH600000|浦发银行"_s, u"@"_s), pairs);
    }
}

TEST_F(TextImportTest, ThemeFirstLines) {
    source_.codeFirst = false;
    const std::pair<QString, QString> cases[] = {
        {u"银行\t600000\tsz000001\t 300999 "_s, u"银行|SH600000|/银行|sz000001|/银行|SZ300999|"_s},
        {u"银行\t600000\tabc\t000001"_s, u"银行|SH600000|"_s},
        {u"2015年\t600000"_s, u"2015年|SH600000|"_s},
        {QString(21, u'名') + u"\t600000"_s, QString()},
        {u"it's\t600000\r银行\t6'0000\t000001"_s,
         u"it's|SH600000|/银行|SH6'0000|/银行|SZ000001|"_s},
        {u"银行\t600000\r银行\t600000\r\n酒\t600519"_s, u"银行|SH600000|/酒|SH600519|"_s},
    };
    for (const auto& [line, pairs] : cases) {
        EXPECT_EQ(pairsOf(line).join(u'/'), pairs);
    }
    source_.firstSeparator = u"中文分号："_s;
    source_.secondSeparator = u"--"_s;
    EXPECT_EQ(pairsOf(u"银行：600000--000001"_s),
              QStringList({u"银行|SH600000|"_s, u"银行|SZ000001|"_s}));
}

TEST_F(TextImportTest, ASecondImportAddsNothingAndStampsNothing) {
    clock_.moment = QDateTime(QDate(2026, 11, 24), QTime(9, 5, 7, 999));
    EXPECT_EQ(pairsOf(u"600000\t银行"_s).size(), 1);
    EXPECT_EQ(store_.rows(u"select ztktime,xiangguandu,guanzhudu from dzhzhuti"_s),
              QStringList{u"2026-11-24 09:05:07|5|0"_s});
    clock_.moment = clock_.moment.addDays(1);
    endOf(import_.importText(source_, {}));
    EXPECT_TRUE(begins(told().value(0), u"观潮台|导入文本主题库完成，共导入新的数据：0条"_s));
    EXPECT_EQ(store_.rows(u"select xiugaizhutitime from tempcanshu"_s),
              QStringList{u"2026-11-24 09:05:07"_s});
}

TEST_F(TextImportTest, BrokenLinesAreLeftOutAndNamed) {
    write(gbkFromText(u"600000\t银"_s) + "\xFF\r\n" + gbkFromText(u"600000\t行\r\n"_s) + "x\xD2");
    endOf(import_.importText(source_, {}));
    EXPECT_EQ(told(),
              QStringList({u"观潮台|导入文本主题库完成，共导入新的数据：1条\n文件按 GBK 读取。"_s,
                           u"观潮台|下列行有无法识别的字节，没有导入：\n第 1、3 行"_s}));
    EXPECT_EQ(store_.rows(u"select zhutiname from dzhzhuti"_s), QStringList{u"行"_s});
}

TEST_F(TextImportTest, ThePreviewShowsTheFirstLine) {
    const QString n21(21, u'名');
    const std::tuple<QString, QStringList, QString> cases[] = {
        {u"sh600000\t银行\t2015\t 2015年 \r000001\tx"_s,
         {u"1|SH600000|银行"_s, u"2|SH600000|2015年"_s, u"||"_s},
         {}},
        {u"600000\t"_s + n21, {u"1|SH600000|"_s + n21}, u"主题名称太长了!名称："_s + n21},
        {u"830799.BJ\t银行"_s, {}, u"代码不正确!代码：830799"_s},
        {u"600519\t白酒"_s, {}, u"代码不存在!代码：SH600519"_s},
        {u"6'\tx"_s, {}, u"代码不存在!代码：6'"_s},
    };
    for (const auto& [text, rows, words] : cases) {
        write(gbkFromText(text));
        import_.preview(source_, grid_);
        EXPECT_EQ(rowTexts(grid_).mid(1), rows) << text.toStdString();
        EXPECT_EQ(told().join(u'/'), words.isEmpty() ? QString() : u"观潮台|"_s + words);
    }
}

}  // namespace guanchao
