// One service of the web: where it is and how it wants to be asked.
#pragma once

#include <QString>

namespace guanchao {

struct Service {
    QString host;             // scheme, name and port; empty: the service is not there
    QString referer;          // a header that the service insists on, or empty
    int timeoutSeconds = 0;   // of a whole request; 0: as long as it takes
    int ahead = 1;            // requests that may be on their way at once
    double pauseSeconds = 0;  // at least, from the start of one request to that of the next
    QString kind = {};        // what it speaks, where a purpose has several kinds
    QString purpose = {};     // what it is asked for, as services.ini names it: quote

    bool operator==(const Service&) const = default;
};

// Of a host as QUrl and QNetworkProxyQuery name it, without its scheme.
bool isOnThisComputer(const QString& hostName);

}  // namespace guanchao
