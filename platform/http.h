// Synchronous GET requests to the services of the web.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "platform/services.h"

namespace guanchao {

class Http {
public:
    virtual ~Http() = default;

    // The body as it came, or nothing on any failure: no host, no connection, a broken transfer, a
    // refusal (status 400 and above). Blocks until the service has answered.
    virtual std::optional<QByteArray> get(const Service& service, const QString& path) = 0;
};

}  // namespace guanchao
