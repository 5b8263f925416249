#include "platform/curl_http.h"

#include <curl/curl.h>

#include <stdexcept>

namespace guanchao {

namespace {

constexpr long mostRedirections = 10;

size_t appendBody(char* data, size_t size, size_t count, void* body) {
    static_cast<QByteArray*>(body)->append(
        data, static_cast<qsizetype>(size) * static_cast<qsizetype>(count));
    return size * count;
}

}  // namespace

struct CurlHttp::Handle {
    Handle() : curl(curl_easy_init()) {
        if (!curl) {
            throw std::runtime_error("libcurl can't start");
        }
        curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(curl, CURLOPT_FAILONERROR, 1L);
        curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 1L);
        curl_easy_setopt(curl, CURLOPT_MAXREDIRS, mostRedirections);
        // Every request goes out directly; the proxies that a user notes down are not used here.
        curl_easy_setopt(curl, CURLOPT_NOPROXY, "*");
        curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, appendBody);
    }
    ~Handle() { curl_easy_cleanup(curl); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    CURL* curl;
};

CurlHttp::CurlHttp() : handle_(std::make_unique<Handle>()) {}

CurlHttp::~CurlHttp() = default;

std::optional<QByteArray> CurlHttp::get(const Service& service, const QString& path) {
    if (service.host.isEmpty()) {
        return std::nullopt;
    }
    QByteArray body;
    CURL* curl = handle_->curl;
    const QByteArray url = (service.host + path).toUtf8();
    const QByteArray referer = service.referer.toUtf8();
    curl_easy_setopt(curl, CURLOPT_URL, url.constData());
    curl_easy_setopt(curl, CURLOPT_REFERER, referer.isEmpty() ? nullptr : referer.constData());
    curl_easy_setopt(curl, CURLOPT_TIMEOUT, static_cast<long>(service.timeoutSeconds));
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &body);
    return curl_easy_perform(curl) == CURLE_OK ? std::optional(body) : std::nullopt;
}

}  // namespace guanchao
