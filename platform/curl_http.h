// Http by libcurl. One handle lives on, so that requests to a service share a connection.
#pragma once

#include <memory>

#include "platform/http.h"

namespace guanchao {

class CurlHttp : public Http {
public:
    // Without `meanwhile` a request holds its caller until it has ended; one that is made from
    // within it fails. Raises std::runtime_error if libcurl can't start.
    explicit CurlHttp(Meanwhile meanwhile = {});
    ~CurlHttp() override;

    std::optional<QByteArray> get(const Service& service, const QString& path) override;

private:
    struct Handle;

    bool transfer();
    bool transferMeanwhile();

    Meanwhile meanwhile_;
    std::unique_ptr<Handle> handle_;
};

}  // namespace guanchao
