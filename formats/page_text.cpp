#include "formats/page_text.h"

#include <QRegularExpression>

#include "formats/gbk.h"
#include "formats/text_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The declaration stands within the first bytes of a page, or it doesn't count.
constexpr qsizetype declarationBytes = 1024;

// In lower case; empty if there is none. A script may have one of its own.
QString declaredCharset(const QByteArray& page) {
    static const QRegularExpression charset(u"<meta\\b[^>]*\\bcharset\\s*=\\s*[\"']?([\\w-]+)"_s,
                                            QRegularExpression::CaseInsensitiveOption);
    return charset.match(QString::fromLatin1(page.left(declarationBytes))).captured(1).toLower();
}

}  // namespace

QString pageText(const QByteArray& page) {
    const QString charset = declaredCharset(page);
    if (charset.isEmpty() || page.startsWith("\xEF\xBB\xBF")) {
        return readText(page).text;
    }
    return charset.startsWith(u"utf"_s) ? QString::fromUtf8(page) : textFromGbk(page);
}

}  // namespace guanchao
