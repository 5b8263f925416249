#include "tools/history_builder/code_forms.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString codePattern =
    u"(?:(SH|SZ|BJ)[.#_]?)?([0-9]{6})(?:[._](SH|SZ|BJ|SS|XSHG|XSHE|XBSE))?"_s;

QString exchangeBySuffix(const QString& suffix) {
    if (suffix == u"SH"_s || suffix == u"SS"_s || suffix == u"XSHG"_s) {
        return u"SH"_s;
    }
    return suffix == u"SZ"_s || suffix == u"XSHE"_s ? u"SZ"_s : u"BJ"_s;
}

QString exchangeByNumber(const QString& digits) {
    if (digits.startsWith(u"92"_s) || digits.startsWith(u'4') || digits.startsWith(u'8')) {
        return u"BJ"_s;
    }
    const QChar first = digits.front();
    return first == u'5' || first == u'6' || first == u'7' || first == u'9' ? u"SH"_s : u"SZ"_s;
}

QString codeOf(const QRegularExpressionMatch& match) {
    if (!match.hasMatch()) {
        return {};
    }
    const QString prefix = match.captured(1).toUpper();
    const QString digits = match.captured(2);
    const QString suffix = match.captured(3).toUpper();
    if (!prefix.isEmpty()) {
        return prefix + digits;
    }
    return (suffix.isEmpty() ? exchangeByNumber(digits) : exchangeBySuffix(suffix)) + digits;
}

}  // namespace

QString stockCode(const QString& text) {
    static const QRegularExpression whole(u'^' + codePattern + u'$',
                                          QRegularExpression::CaseInsensitiveOption);
    return codeOf(whole.match(text));
}

QString stockCodeOfFile(const QString& path) {
    static const QRegularExpression part(u"(?<![0-9A-Za-z])"_s + codePattern + u"(?![0-9A-Za-z])"_s,
                                         QRegularExpression::CaseInsensitiveOption);
    return codeOf(part.match(QFileInfo(path).completeBaseName()));
}

bool isOfBeijing(const QString& dm) {
    return dm.startsWith(u"BJ"_s);
}

}  // namespace guanchao
