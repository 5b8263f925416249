#include "platform/gbk.h"

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

}  // namespace guanchao
