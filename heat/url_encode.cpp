#include "heat/url_encode.h"

#include <cstdlib>

#include "formats/gbk.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int highDivisor = 255;  // like 256 for every first byte of the code page

QString hexadecimal(int part) {
    return u'%' + QString::number(part, 16).toUpper();
}

QString encoded(QChar character) {
    const quint16 code = codeInGbk(character);
    if (std::abs(static_cast<qint16>(code)) < 255) {
        return character;
    }
    return hexadecimal((code & 0xFF00) / highDivisor) + hexadecimal(code & 255);
}

}  // namespace

QString urlEncode(const QString& text) {
    QString address;
    for (const QChar character : text) {
        address += encoded(character);
    }
    return address.replace(u' ', u"%20"_s);
}

QString withoutMarks(QString words) {
    for (const QChar mark : u"-()/\"_"_s) {
        words.replace(mark, u' ');
    }
    return words;
}

QString searchPage(const QString& addressTemplate, const QString& words) {
    return QString(addressTemplate).replace(u"tihuandm"_s, urlEncode(words));
}

}  // namespace guanchao
