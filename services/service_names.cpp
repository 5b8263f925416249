#include "services/service_names.h"

#include <QHash>
#include <QUrl>
#include <algorithm>

#include "base/log_words.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QString purposeName(const QString& purpose) {
    static const QHash<QString, QString> names = {
        {u"quote"_s, u"行情"_s},
        {u"history"_s, u"历史行情"_s},
        {u"factors"_s, u"复权因子"_s},
        {u"fundamentals"_s, u"基本面"_s},
        {u"boards"_s, u"板块"_s},
        {u"stocklist"_s, u"代码表"_s},
        {u"chart"_s, u"走势图"_s},
        {u"stockpage"_s, u"个股页面"_s},
        {u"sitepage"_s, u"个股行情网页"_s},
        {u"newspage"_s, u"个股资讯"_s},
        {u"search"_s, u"搜索"_s},
        {u"vendor"_s, u"软件网站"_s},
    };
    return names.value(purpose, purpose);
}

QString kindName(const QString& kind) {
    static const QHash<QString, QString> names = {{u"sina"_s, u"新浪"_s},
                                                  {u"tencent"_s, u"腾讯"_s},
                                                  {u"eastmoney"_s, u"东方财富"_s},
                                                  {u"csv"_s, u"CSV"_s},
                                                  {u"page"_s, u"网页"_s}};
    return names.value(kind);
}

QString serviceName(const Service& service) {
    const QString name = kindName(service.kind);
    const bool tellsWhose =
        !name.isEmpty() && service.kind != u"csv"_s && service.kind != u"page"_s;
    return tellsWhose ? name : QUrl(service.host).host();
}

QString nameAndHost(const Service& service) {
    const QString name = kindName(service.kind);
    return u"%1（%2）"_s.arg(name.isEmpty() ? service.kind : name, service.host);
}

QString loggedName(const QString& purpose, const Service& service) {
    return QStringList{purposeName(purpose), kindName(service.kind), shownAddress(service.host)}
        .join(u' ')
        .simplified();
}

QString lineOn(const Service& service, const QString& words) {
    return nameAndHost(service) + u'：' + words;
}

QString allOffWords(const QString& purpose) {
    return u"%1的网站都停用了，请在%2里启用"_s.arg(purposeName(purpose), servicesWindow);
}

bool leadsToServices(const QString& words) {
    return words.contains(servicesWindow);
}

QString adviceOn(const QStringList& reasons, const QString& later) {
    return std::ranges::any_of(reasons, leadsToServices)
               ? QString()
               : u"请检查网络，在%1里看看网站通不通，%2。"_s.arg(servicesWindow, later);
}

}  // namespace guanchao
