// What live_check asks the services for: a row a purpose, read by the classes by which the program
// itself reads it.
#pragma once

#include <QCoro/QCoroTask>
#include <QList>
#include <QString>
#include <functional>

#include "collector/collector_settings.h"
#include "platform/clock.h"
#include "services/services.h"
#include "tools/live_check/noted_http.h"

namespace guanchao {

// What came of asking one service, in Chinese.
struct Finding {
    bool answers = false;
    QString words;  // rows, days and sample values, or the fault
};

// What a check asks with.
struct CheckDesk {
    NotedHttp& http;
    const Clock& clock;
};

struct Check {
    QString purpose;
    QList<Service> services;  // in the order in which the program asks them
    std::function<QCoro::Task<Finding>(CheckDesk desk, Service service)> ask;
};

// `searchPages` is the pattern of the collector's search pages. Raises OperationError for one that
// is none.
QList<Check> liveChecks(const Services& services, const QString& searchPages,
                        const CollectorSettings& settings);

}  // namespace guanchao
