#include "platform/page_charset.h"

#include <QRegularExpression>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The declaration stands within the first bytes of a page, or it doesn't count.
constexpr qsizetype declarationBytes = 1024;

}  // namespace

QString declaredCharset(const QByteArray& page) {
    if (page.startsWith("\xEF\xBB\xBF")) {
        return u"utf-8"_s;
    }
    static const QRegularExpression charset(u"charset\\s*=\\s*[\"']?([\\w-]+)"_s,
                                            QRegularExpression::CaseInsensitiveOption);
    return charset.match(QString::fromLatin1(page.first(std::min(page.size(), declarationBytes))))
        .captured(1)
        .toLower();
}

}  // namespace guanchao
