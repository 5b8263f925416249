#include "platform/curl_http.h"

#include <curl/curl.h>

#include <QScopeGuard>
#include <stdexcept>

namespace guanchao {

namespace {

// Short enough for a window to stay painted.
constexpr int millisecondsBetweenCalls = 20;
constexpr long mostRedirections = 10;

size_t appendBody(char* data, size_t size, size_t count, void* body) {
    static_cast<QByteArray*>(body)->append(
        data, static_cast<qsizetype>(size) * static_cast<qsizetype>(count));
    return size * count;
}

}  // namespace

struct CurlHttp::Handle {
    Handle() : curl(curl_easy_init()), multi(curl_multi_init()) {
        if (!curl || !multi) {
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
    ~Handle() {
        curl_easy_cleanup(curl);
        curl_multi_cleanup(multi);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    CURL* curl;
    CURLM* multi;  // keeps the connection of requests that let events happen
    bool inUse = false;
};

CurlHttp::CurlHttp(Meanwhile meanwhile)
    : meanwhile_(std::move(meanwhile)), handle_(std::make_unique<Handle>()) {}

CurlHttp::~CurlHttp() = default;

std::optional<QByteArray> CurlHttp::get(const Service& service, const QString& path) {
    if (service.host.isEmpty() || handle_->inUse) {
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
    return transfer() ? std::optional(body) : std::nullopt;
}

bool CurlHttp::transfer() {
    return meanwhile_ ? transferMeanwhile() : curl_easy_perform(handle_->curl) == CURLE_OK;
}

bool CurlHttp::transferMeanwhile() {
    handle_->inUse = true;
    curl_multi_add_handle(handle_->multi, handle_->curl);
    const auto remove = qScopeGuard([this] {
        curl_multi_remove_handle(handle_->multi, handle_->curl);
        handle_->inUse = false;
    });
    int running = 1;
    while (curl_multi_perform(handle_->multi, &running) == CURLM_OK && running > 0) {
        if (!meanwhile_()) {
            return false;
        }
        curl_multi_poll(handle_->multi, nullptr, 0, millisecondsBetweenCalls, nullptr);
    }
    int left = 0;
    const CURLMsg* message = curl_multi_info_read(handle_->multi, &left);
    return message && message->msg == CURLMSG_DONE && message->data.result == CURLE_OK;
}

}  // namespace guanchao
