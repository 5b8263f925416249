#include "formats/gbk.h"

#include "tests/support/qt_printers.h"

namespace guanchao {

TEST(Gbk, ATextThatMayBeInEitherIsReadAsItIs) {
    const QString text = u"600000\t银行、“金融”\r\n"_s;
    const QString broken = u"\uFFFD"_s;
    const struct {
        QByteArray bytes;
        QString text;
    } cases[] = {
        {gbkFromText(text), text},
        {text.toUtf8(), text},
        {"\xEF\xBB\xBF" + text.toUtf8(), text},
        {"\xEF\xBB\xBFplain", u"plain"_s},
        {"plain", u"plain"_s},
        {{}, {}},
        {"\xEF\xBB\xBF" + text.toUtf8() + "\xFF", text + broken},
        {gbkFromText(text) + "\xFF" + gbkFromText(text), text + broken + text},
        {gbkFromText(text) + "\xD2", text + broken},
    };
    for (const auto& it : cases) {
        EXPECT_EQ(textFromUtf8OrGbk(it.bytes), it.text) << it.bytes.toHex().toStdString();
    }
}

}  // namespace guanchao
