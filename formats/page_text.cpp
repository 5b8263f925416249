#include "formats/page_text.h"

#include <QRegularExpression>
#include <QStringDecoder>

#include "formats/gbk.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The declaration stands within the first bytes of a page, or it doesn't count.
constexpr qsizetype declarationBytes = 1024;

// In lower case; empty if there is none. A script may have one of its own.
QString declaredCharset(const QByteArray& page) {
    if (page.startsWith("\xEF\xBB\xBF")) {
        return u"utf-8"_s;
    }
    static const QRegularExpression charset(u"<meta\\b[^>]*\\bcharset\\s*=\\s*[\"']?([\\w-]+)"_s,
                                            QRegularExpression::CaseInsensitiveOption);
    return charset.match(QString::fromLatin1(page.left(declarationBytes))).captured(1).toLower();
}

}  // namespace

QString pageText(const QByteArray& page) {
    const QString charset = declaredCharset(page);
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(page);
    const bool isUtf8 = charset.isEmpty() ? !decoder.hasError() : charset.startsWith(u"utf"_s);
    return isUtf8 ? text : textFromGbk(page);
}

}  // namespace guanchao
