#include "exchange/theme_text.h"

#include <gtest/gtest.h>

#include "exchange/text_file.h"
#include "formats/gbk.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

TEST(ThemeText, EntriesStandForSeparatorsAndTheRestForItself) {
    const QStringList values = {u"\t"_s, u" "_s, u","_s, u"，"_s, u":"_s, u"："_s, u"、"_s};
    const QStringList entries = separatorEntries();
    ASSERT_EQ(entries.size(), values.size());
    EXPECT_EQ(entries.first(), u"TAB键"_s);
    for (int at = 0; at < entries.size(); ++at) {
        EXPECT_EQ(separatorOf(entries[at]), values[at]) << entries[at].toStdString();
    }
    EXPECT_EQ(separatorOf(u"--"_s), u"--"_s);
    EXPECT_EQ(separatorOf(u"；"_s), u"；"_s);
}

TEST(ThemeText, ALineIsCutAtTheFirstSeparator) {
    const struct {
        QString line, separator, first, second;
    } cases[] = {
        {u"600000\t银行\t金融"_s, u"\t"_s, u"600000"_s, u"银行\t金融"_s},
        {u" a , b ,c "_s, u","_s, u" a "_s, u"b ,c"_s},
        {u"a--b--c"_s, u"--"_s, u"a"_s, u"-b--c"_s},
        {u"a=> b"_s, u"=>"_s, u"a"_s, u"> b"_s},
        {u"a, \t "_s, u","_s, u"a"_s, u"\t"_s},
        {u",b"_s, u","_s, QString(), u"b"_s},
        {u"a,"_s, u","_s, u"a"_s, QString()},
    };
    for (const auto& it : cases) {
        const std::optional<LineParts> parts = splitLine(it.line, it.separator);
        ASSERT_TRUE(parts.has_value()) << it.line.toStdString();
        EXPECT_EQ(parts->first, it.first);
        EXPECT_EQ(parts->second, it.second);
    }
    EXPECT_FALSE(splitLine(u"600000 银行"_s, u"\t"_s).has_value());
    EXPECT_FALSE(splitLine({}, u","_s).has_value());
    EXPECT_EQ(splitPieces({}, u","_s), QStringList());
    EXPECT_EQ(splitPieces(u"a , b,,c"_s, u","_s), QStringList({u"a"_s, u"b"_s, QString(), u"c"_s}));
    EXPECT_EQ(splitPieces(u"a--b-c"_s, u"--"_s), QStringList({u"a"_s, u"b-c"_s}));
}

TEST(ThemeText, CodesAreCutTestedAndGivenTheirMarket) {
    const struct {
        QString code, normal;
        bool wellFormed;
    } cases[] = {
        {u"600000"_s, u"SH600000"_s, true},
        {u"000001"_s, u"SZ000001"_s, true},
        {u"300750"_s, u"SZ300750"_s, true},
        {u"SH600000"_s, u"SH600000"_s, true},
        {u"sz000001"_s, u"sz000001"_s, true},
        {u"SH600000.SS"_s, u"SH600000"_s, true},
        {u"sh600000浦发"_s, u"sh600000"_s, true},
        {u"600000.SH"_s, u"SH600000"_s, true},
        {u"Sh6000000"_s, u"SZSh6000"_s, true},
        {u"Sh600000"_s, u"Sh600000"_s, true},
        {u"6000000"_s, u"6000000"_s, true},
        {u"SH6000"_s, u"SZSH6000"_s, true},
        {u"6"_s, u"6"_s, true},
        {u"830799"_s, u"830799"_s, false},
        {u"银行银行银行银行银行"_s, u"银行银行银行"_s, false},
        {QString(), QString(), false},
        {u" 600000"_s, u" 600000"_s, false},
        {u"HK00700"_s, u"HK00700"_s, false},
    };
    for (const auto& it : cases) {
        const NormalCode normal = normaliseCode(it.code);
        EXPECT_EQ(normal.code, it.normal) << it.code.toStdString();
        EXPECT_EQ(normal.wellFormed, it.wellFormed) << it.code.toStdString();
    }
}

TEST(ThemeText, NamesOfDigitsAndLongOnesAreTold) {
    EXPECT_TRUE(isDigitsOnly(u"2015"_s));
    for (const QString& name : {QString(), u"2015年"_s, u"１２"_s, u"-1"_s, u"1 2"_s, u"1\n"_s}) {
        EXPECT_FALSE(isDigitsOnly(name)) << name.toStdString();
    }
    EXPECT_FALSE(isTooLong(QString(20, u'名')));
    EXPECT_TRUE(isTooLong(QString(21, u'名')));
}

TEST(TextFile, LinesEndAtCarriageReturns) {
    const struct {
        QByteArray bytes;
        QStringList lines;
    } cases[] = {
        {"a\r\nb\rc\r\n", {u"a"_s, u"b"_s, u"c"_s}},
        {"a\nb\r\nc", {u"a\nb"_s, u"c"_s}},
        {"a\r\r\n\r\nb", {u"a"_s, QString(), QString(), u"b"_s}},
        {"a\nb\n", {u"a"_s, u"b"_s}},
        {"a", {u"a"_s}},
        {"", {}},
        {"\r\n", {QString()}},
    };
    for (const auto& it : cases) {
        EXPECT_EQ(linesOf(it.bytes), it.lines) << it.bytes.toStdString();
    }
}

TEST(TextFile, TheEncodingIsTold) {
    const QString text = u"600000\t银行、“金融”\r\n"_s;
    const QStringList lines = {u"600000\t银行、“金融”"_s};
    EXPECT_EQ(linesOf(gbkFromText(text)), lines);
    EXPECT_EQ(linesOf(text.toUtf8()), lines);
    EXPECT_EQ(linesOf("\xEF\xBB\xBF" + text.toUtf8()), lines);
    EXPECT_EQ(linesOf("\xEF\xBB\xBFplain"), QStringList{u"plain"_s});
    const QByteArray good = gbkFromText(u"银行\r"_s);
    for (const QByteArray& bad : {QByteArray("\xFF"), QByteArray("\xD2"), QByteArray("\x81\x20")}) {
        const QStringList read = linesOf(good + "a" + bad + "\r" + good);
        ASSERT_EQ(read.size(), 3) << bad.toHex().toStdString();
        EXPECT_TRUE(isBroken(read[1])) << bad.toHex().toStdString();
        EXPECT_EQ(read[0], u"银行"_s);
        EXPECT_EQ(read[2], u"银行"_s);
        EXPECT_FALSE(isBroken(read[0]));
    }
}

}  // namespace guanchao
