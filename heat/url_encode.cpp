#include "heat/url_encode.h"

#include "platform/gbk.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString hexadecimal(int number) {
    return u'%' + QString::number(number, 16).toUpper();
}

QString encoded(QChar character) {
    const QByteArray bytes = gbkFromText(character);
    if (bytes.size() != 2) {
        return character;
    }
    const int code = static_cast<uchar>(bytes[0]) << 8 | static_cast<uchar>(bytes[1]);
    // 255 where 256 would be expected; for the first bytes of GBK both give the same.
    return hexadecimal((code & 0xFF00) / 255) + hexadecimal(code & 0xFF);
}

}  // namespace

QString URLEncode(const QString& text) {
    QString address;
    for (const QChar character : text) {
        address += encoded(character);
    }
    return address.replace(u' ', u"%20"_s);
}

}  // namespace guanchao
