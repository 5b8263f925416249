// Which services of the web are asked for what: services.ini in the application folder, with the
// standard ones where the file or a section is missing.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "formats/ini_text.h"
#include "platform/service.h"

namespace guanchao {

struct Services {
    // In the order in which they are asked: [history], [history.2], ... A purpose that the file
    // names has only the services that it names.
    QList<Service> quote;         // 行情
    QList<Service> history;       // 历史行情
    QList<Service> factors;       // 复权因子, of the prices of history's own kind
    QList<Service> fundamentals;  // 基本面
    QList<Service> boards;        // 板块: concepts, industries and regions with their stocks
    QList<Service> search;        // 搜索; the host of a page's takes the place of its pattern's
    QList<Service> stockList;     // 代码表: the list of all stocks

    Service chart;      // 走势图: /newchart/
    Service stockpage;  // 个股页面: /realstock/company/
    Service sitepage;   // 个股行情网页: /sz000693.html
    Service newspage;   // 个股资讯: /news/stock/
    Service vendor;     // the maker's site: version file, proxy list

    bool isPractice = false;  // prices are made up: the file has a section [practice]

    QStringList complaints;  // of sections that were passed over, in Chinese

    bool operator==(const Services&) const = default;
};

Services readServices(const QString& iniPath);
Services readServices(const IniText& ini);

}  // namespace guanchao
