// Http by libcurl. One handle lives on, so that requests to a service share a connection.
#pragma once

#include <functional>
#include <memory>

#include "platform/http.h"

namespace guanchao {

class CurlHttp : public Http {
public:
    // Called every few milliseconds while a request waits; false breaks the request off.
    using Meanwhile = std::function<bool()>;

    // Without `meanwhile` a request holds its caller until it has ended. Raises std::runtime_error
    // if libcurl can't start.
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
