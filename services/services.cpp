#include "services/services.h"

#include <QHash>

#include "formats/ini_file.h"
#include "services/service_entries.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

Services readServices(const QString& iniPath) {
    return readServices(IniFile(iniPath).text());
}

Services readServices(const IniText& ini) {
    const ReadEntries read = readEntries(ini);
    Services services;
    const QHash<QString, QList<Service>*> lists = {
        {u"quote"_s, &services.quote},     {u"history"_s, &services.history},
        {u"factors"_s, &services.factors}, {u"fundamentals"_s, &services.fundamentals},
        {u"boards"_s, &services.boards},   {u"stocklist"_s, &services.stockList},
        {u"search"_s, &services.search}};
    const QHash<QString, Service*> singles = {{u"chart"_s, &services.chart},
                                              {u"stockpage"_s, &services.stockpage},
                                              {u"sitepage"_s, &services.sitepage},
                                              {u"newspage"_s, &services.newspage},
                                              {u"vendor"_s, &services.vendor}};
    for (const ServiceEntry& it : read.entries) {
        if (!it.isUsed) {
            continue;
        }
        if (QList<Service>* list = lists.value(it.purpose)) {
            *list << it.service;
        } else {
            *singles[it.purpose] = it.service;
        }
    }
    services.isPractice = ini.hasSection(u"practice"_s);
    services.complaints = read.complaints;
    return services;
}

}  // namespace guanchao
