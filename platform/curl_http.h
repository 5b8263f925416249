// Http by libcurl. One handle lives on, so that requests to a service share a connection.
#pragma once

#include <memory>

#include "platform/http.h"

namespace guanchao {

class CurlHttp : public Http {
public:
    // Raises std::runtime_error if libcurl can't start.
    CurlHttp();
    ~CurlHttp() override;

    std::optional<QByteArray> get(const Service& service, const QString& path) override;

private:
    struct Handle;

    std::unique_ptr<Handle> handle_;
};

}  // namespace guanchao
