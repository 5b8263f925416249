// What can be asked of a service to see whether it answers, and how.
#pragma once

#include <QCoro/QCoroTask>
#include <QList>
#include <QString>
#include <functional>
#include <stop_token>

#include "platform/clock.h"
#include "platform/service.h"
#include "services/noted_http.h"

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
    QString purpose;          // as services.ini names it
    QString what;             // of several checks of a purpose: 股票
    QList<Service> services;  // in the order in which the program asks them
    std::function<QCoro::Task<Finding>(CheckDesk desk, Service service, std::stop_token stop)> ask;
};

}  // namespace guanchao
