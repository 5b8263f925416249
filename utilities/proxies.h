// 代理服务器: the list of proxy servers, which of them is the current one, and two switches. They
// are only kept: every request goes out directly. Tables proxy and tempcanshu of the article store;
// a list can be had from a page of the vendor's site. A failed statement raises StoreError, with
// nothing of its operation written.
#pragma once

#include <QCoro/QCoroTask>
#include <optional>
#include <stop_token>

#include "formats/html_page.h"
#include "platform/dialogs.h"
#include "platform/http_client.h"
#include "store/stores.h"

namespace guanchao {

// A server as the window shows it and as it is typed there.
struct Proxy {
    QString id;  // empty for one that is not in the list
    QString server;
    QString port;
    bool needsUser = false;
    QString user;
    QString password;
    QString note;  // 备注
    bool isCurrent = false;
};

struct ProxyList {
    QStringList lines;      // the id, four blanks and the server
    bool useProxy = false;  // 启用代理服务器
    bool pasv = false;      // 启用PASV模式
};

class Proxies {
public:
    Proxies(const Stores& stores, Dialogs& dialogs, HttpClient& http, const Service& vendor)
        : stores_(stores), dialogs_(dialogs), http_(http), vendor_(vendor) {}

    ProxyList load() const;
    // Nothing if the server of the line is in the list no more.
    std::optional<Proxy> proxyOf(const QString& line) const;

    void setUseProxy(bool on);
    void setPasv(bool on);

    // They answer whether the list is to be loaded again.
    bool add(const Proxy& typed);
    bool modify(const Proxy& typed);
    bool remove(const QString& line);
    // The servers of the vendor's page in place of those that came from it before.
    QCoro::Task<bool> download(std::stop_token stop);

private:
    std::optional<Proxy> checked(const Proxy& typed);
    void setSwitch(const QString& column, bool on);
    void takeOver(const QList<HtmlTable>& tables);

    const Stores& stores_;
    Dialogs& dialogs_;
    HttpClient& http_;
    const Service& vendor_;
};

}  // namespace guanchao
