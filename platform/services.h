// Where the services of the web are found: services.ini in the application folder, with the public
// services where the file or a section is missing.
#pragma once

#include <QString>

namespace guanchao {

struct Service {
    QString host;            // scheme, name and port; empty: the service is not there
    QString referer;         // a header that the service insists on, or empty
    int timeoutSeconds = 0;  // of a whole request; 0: as long as it takes
    int ahead = 1;           // requests that may be on their way at once
};

struct Services {
    Service quote;      // 行情: /list=
    Service chart;      // 走势图: /newchart/
    Service stockpage;  // 个股页面: /realstock/company/
    Service sitepage;   // 个股行情网页: /sz000693.html
    Service newspage;   // 个股资讯: /news/stock/
    Service history;    // 历史行情: /table.csv
    Service vendor;     // the maker's site: version file, proxy list
    Service search;     // 搜索网页: in place of the host that the search page pattern names
};

Services readServices(const QString& iniPath);

}  // namespace guanchao
