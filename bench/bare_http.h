// The limit of everything that asks a service: the library called in a loop over one handle.
#pragma once

#include <curl/curl.h>

#include <QByteArray>
#include <QString>

namespace guanchao {

class BareHttp {
public:
    BareHttp() {
        curl_easy_setopt(curl_, CURLOPT_NOPROXY, "*");
        curl_easy_setopt(curl_, CURLOPT_WRITEFUNCTION, appendBody);
    }
    ~BareHttp() { curl_easy_cleanup(curl_); }
    BareHttp(const BareHttp&) = delete;
    BareHttp& operator=(const BareHttp&) = delete;

    QByteArray get(const QString& url) {
        QByteArray body;
        curl_easy_setopt(curl_, CURLOPT_URL, url.toUtf8().constData());
        curl_easy_setopt(curl_, CURLOPT_WRITEDATA, &body);
        curl_easy_perform(curl_);
        return body;
    }

private:
    static size_t appendBody(char* data, size_t size, size_t count, void* body) {
        const size_t bytes = size * count;
        static_cast<QByteArray*>(body)->append(data, static_cast<qsizetype>(bytes));
        return bytes;
    }

    CURL* curl_ = curl_easy_init();
};

}  // namespace guanchao
