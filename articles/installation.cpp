#include "articles/installation.h"

#include <QCryptographicHash>
#include <QSysInfo>

namespace guanchao {

QString installationText(const QString& applicationFolder) {
    constexpr int length = 8;
    const QByteArray place = QSysInfo::machineUniqueId() + applicationFolder.toUtf8();
    const QByteArray hash = QCryptographicHash::hash(place, QCryptographicHash::Sha256);
    return QString::fromLatin1(hash.toHex().first(length));
}

}  // namespace guanchao
