#include "platform/service.h"

#include <QHostAddress>

namespace guanchao {

bool isOnThisComputer(const QString& hostName) {
    return hostName == QStringLiteral("localhost") || QHostAddress(hostName).isLoopback();
}

}  // namespace guanchao
