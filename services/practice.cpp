#include "services/practice.h"

#include <QSet>
#include <QUrl>
#include <algorithm>

#include "base/activity.h"
#include "base/values.h"
#include "services/service_names.h"
#include "services/standard_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

bool isReal(const QString& host) {
    return !host.isEmpty() && !isOnThisComputer(QUrl(host).host());
}

// By purpose.
QList<QList<Service>> allServices(const Services& all) {
    return {all.quote,       all.history,    all.factors,    all.fundamentals,
            all.boards,      all.stockList,  all.search,     {all.chart},
            {all.stockpage}, {all.sitepage}, {all.newspage}, {all.vendor}};
}

// Those of each purpose that has any.
QList<QList<Service>> realServices(const Services& all) {
    QList<QList<Service>> purposes;
    for (const QList<Service>& services : allServices(all)) {
        QList<Service> real;
        std::ranges::copy_if(services, std::back_inserter(real),
                             [](const Service& it) { return isReal(it.host); });
        if (!real.isEmpty()) {
            purposes << real;
        }
    }
    return purposes;
}

QSet<QString> hostsOf(const Services& all) {
    QSet<QString> hosts = {QString()};  // of what has no service
    for (const QList<Service>& services : allServices(all)) {
        for (const Service& it : services) {
            hosts << it.host;
        }
    }
    return hosts;
}

// 行情（新浪、腾讯）.
QString namesOf(const QList<Service>& services) {
    QStringList names;
    for (const Service& it : services) {
        names << serviceName(it);
    }
    return u"%1（%2）"_s.arg(purposeName(services.first().purpose), names.join(u'、'));
}

}  // namespace

QString marketWords(const Services& services) {
    if (services.isPractice) {
        return u"练习行情"_s;
    }
    const QSet<QString> standard = hostsOf(readServices(IniText(standardFile())));
    return standard.contains(hostsOf(services)) ? u"公开的行情网站"_s
                                                : u"网站有 services.ini 里自己写的"_s;
}

QString practiceWords(const Services& services) {
    if (!services.isPractice) {
        return {};
    }
    QStringList real;
    for (const QList<Service>& it : realServices(services)) {
        real << namesOf(it);
    }
    return real.isEmpty() ? u"练习行情：价格都是编造的，和真实的市场无关"_s
                          : u"注意：这里是练习行情，可是这些网站是真的，请在%1里停用：%2"_s.arg(
                                servicesWindow, real.join(u'、'));
}

std::optional<Service> realNewcomer(const Services& now, const Services& next) {
    if (!now.isPractice) {
        return std::nullopt;
    }
    QSet<QString> asked;
    for (const QList<Service>& services : realServices(now)) {
        for (const Service& it : services) {
            asked << it.purpose + it.host;
        }
    }
    for (const QList<Service>& services : realServices(next)) {
        for (const Service& it : services) {
            if (!asked.contains(it.purpose + it.host)) {
                return it;
            }
        }
    }
    return std::nullopt;
}

void refuseReal(const Services& services, const QString& host) {
    if (services.isPractice && isReal(host)) {
        throw OperationError(
            u"练习行情里不能用真的网站 %1：编造的价格会和真的混进同样的库里，再也分不开。\n"
            "要看真的行情，请打开实盘：程序菜单里的观潮台，在源码目录里是 ./run live；它有自己的应用目录。"_s
                .arg(shortened(host, longestShownName)));
    }
}

}  // namespace guanchao
