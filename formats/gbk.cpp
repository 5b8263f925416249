#include "formats/gbk.h"

#include <QStringDecoder>
#include <QStringEncoder>
#include <stdexcept>

namespace guanchao {

QString textFromGbk(const QByteArray& bytes) {
    QStringDecoder decoder("GB18030");
    if (!decoder.isValid()) {
        throw std::runtime_error("Qt was built without the GB18030 conversion");
    }
    return decoder(bytes);
}

QByteArray gbkFromText(const QString& text) {
    QStringEncoder encoder("GB18030");
    if (!encoder.isValid()) {
        throw std::runtime_error("Qt was built without the GB18030 conversion");
    }
    return encoder(text);
}

quint16 codeInGbk(QChar character) {
    QStringEncoder encoder("GBK");
    if (!encoder.isValid()) {
        throw std::runtime_error("Qt was built without the GBK conversion");
    }
    const QByteArray bytes = encoder(QStringView(&character, 1));
    const auto byte = [&](qsizetype at) { return static_cast<quint8>(bytes[at]); };
    if (bytes.size() == 2) {
        return static_cast<quint16>(byte(0) << 8 | byte(1));
    }
    return bytes.size() == 1 ? byte(0) : u'?';
}

}  // namespace guanchao
