#include "formats/text_file.h"

#include <QTemporaryDir>

#include "base/activity.h"

#include "formats/gbk.h"
#include "tests/support/files.h"

namespace guanchao {

static QByteArray utf16(const QString& text, bool bigEnded) {
    QByteArray bytes;
    for (const QChar unit : QString(u'\uFEFF' + text)) {
        const char high = static_cast<char>(unit.row());
        const char low = static_cast<char>(unit.cell());
        bytes.append(bigEnded ? high : low).append(bigEnded ? low : high);
    }
    return bytes;
}

TEST(TextFile, ATextIsReadInItsEncoding) {
    const QString text = u"600000\t银行、“金融”😀\r\n"_s;
    const QString broken = u"\uFFFD"_s;
    const QByteArray mark = "\xEF\xBB\xBF";
    const std::tuple<QByteArray, QString, QString> cases[] = {
        {gbkFromText(text), text, u"GBK"_s},
        {gbkFromText(text) + "\xFF" + gbkFromText(text), text + broken + text, u"GBK"_s},
        {gbkFromText(text) + "\xD2", text + broken, u"GBK"_s},
        // Their bytes have the form of UTF-8, in which they would be letters of Hebrew or Armenian.
        {gbkFromText(u"芯片"_s), u"芯片"_s, u"GBK"_s},
        {gbkFromText(u"医药\r\n"_s), u"医药\r\n"_s, u"GBK"_s},
        {gbkFromText(u"600000\t煤炭"_s), u"600000\t煤炭"_s, u"GBK"_s},
        {gbkFromText(u"双"_s), u"双"_s, u"GBK"_s},
        {"x\xD2", u"x"_s + broken, u"GBK"_s},
        {text.toUtf8(), text, u"UTF-8"_s},
        {u"银é"_s.toUtf8(), u"银é"_s, u"UTF-8"_s},
        {u"银行"_s.toUtf8().chopped(2), u"银"_s + broken, u"UTF-8"_s},
        {u"银"_s.toUtf8() + "\xC3", u"银"_s + broken, u"UTF-8"_s},
        {mark + text.toUtf8(), text, u"UTF-8"_s},
        {mark + "plain", u"plain"_s, u"UTF-8"_s},
        {mark + text.toUtf8() + "\xFF", text + broken, u"UTF-8"_s},
        {utf16(text, false), text, u"UTF-16"_s},
        {utf16(text, true), text, u"UTF-16"_s},
        {utf16(u"\xD800x\xDC00"_s, false), broken + u"x"_s + broken, u"UTF-16"_s},
        {"plain", u"plain"_s, {}},
        {{}, {}, {}},
    };
    for (const auto& [bytes, wanted, encoding] : cases) {
        const ReadText read = readText(bytes);
        EXPECT_EQ(read.text, wanted) << bytes.toHex().toStdString();
        EXPECT_EQ(read.encoding, encoding) << bytes.toHex().toStdString();
    }
    EXPECT_TRUE(isBroken(readText(u"银行"_s.toUtf8().chopped(1)).text));
    EXPECT_EQ(linesOf(u"a\r\nb\nc\rd\r\n\r\ne\n"_s),
              QStringList({u"a"_s, u"b"_s, u"c"_s, u"d"_s, QString(), u"e"_s}));
}

TEST(TextFile, AProgramOrAStoreIsRefused) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a"_s);
    writeFile(path, QByteArray("SH600000\0\x01", 10));
    EXPECT_THROW(readTextFile(path), OperationError);
    writeFile(path, "SH600000\t银行");
    EXPECT_EQ(readTextFile(path).lines, QStringList{u"SH600000\t银行"_s});
}

// A header in ASCII over more than a block, so that a later block tells the encoding.
TEST(TextFile, BlocksGiveTheLinesOfTheWholeFile) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"large.csv"_s);
    QString text = QString(u"600000,1\r\n"_s).repeated(110000);
    for (int at = 0; at < 20000; ++at) {
        text += u"浦发银行%1,2\n"_s.arg(at);
    }
    const QByteArray mark = "\xEF\xBB\xBF";
    const QByteArrayList files = {
        gbkFromText(text),        text.toUtf8(),
        mark + text.toUtf8(),     utf16(text, false),
        text.chopped(1).toUtf8(), gbkFromText(text).replace("\r\n", "\r").replace('\n', '\r')};
    for (const QByteArray& bytes : files) {
        writeFile(path, bytes);
        TextBlocks blocks(path);
        QStringList lines;
        for (QStringList block = blocks.next(); !block.isEmpty(); block = blocks.next()) {
            lines += block;
        }
        EXPECT_TRUE(lines == linesOf(text)) << bytes.first(10).toHex().toStdString();
        EXPECT_EQ(blocks.bytesRead(), bytes.size());
    }
}

}  // namespace guanchao
