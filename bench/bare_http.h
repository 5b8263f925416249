// The limit of everything that asks a service: the library called in a loop, nothing around it.
#pragma once

#include <curl/curl.h>

#include <QByteArray>
#include <QStringList>
#include <vector>

namespace guanchao {

inline size_t appendBody(char* data, size_t size, size_t count, void* body) {
    const size_t bytes = size * count;
    static_cast<QByteArray*>(body)->append(data, static_cast<qsizetype>(bytes));
    return bytes;
}

inline CURL* bareHandle() {
    CURL* curl = curl_easy_init();
    curl_easy_setopt(curl, CURLOPT_NOPROXY, "*");
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, appendBody);
    return curl;
}

// One request after the other.
class BareHttp {
public:
    BareHttp() = default;
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
    CURL* curl_ = bareHandle();
};

// The requests, so many at a time over as many connections; gives the replies back.
inline QList<QByteArray> bareRequests(const QString& host, const QStringList& paths, long ahead) {
    QList<QByteArray> replies(paths.size());
    CURLM* multi = curl_multi_init();
    curl_multi_setopt(multi, CURLMOPT_MAX_TOTAL_CONNECTIONS, ahead);
    std::vector<CURL*> requests;
    for (qsizetype at = 0; at < paths.size(); ++at) {
        CURL* request = bareHandle();
        curl_easy_setopt(request, CURLOPT_URL, (host + paths[at]).toUtf8().constData());
        curl_easy_setopt(request, CURLOPT_WRITEDATA, &replies[at]);
        curl_multi_add_handle(multi, request);
        requests.push_back(request);
    }
    int running = 0;
    curl_multi_perform(multi, &running);
    while (running > 0) {
        curl_multi_poll(multi, nullptr, 0, 1000, nullptr);
        curl_multi_perform(multi, &running);
    }
    for (CURL* request : requests) {
        curl_multi_remove_handle(multi, request);
        curl_easy_cleanup(request);
    }
    curl_multi_cleanup(multi);
    return replies;
}

}  // namespace guanchao
