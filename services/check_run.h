// Carries checks out, one request at a time.
#pragma once

#include <chrono>

#include "services/service_check.h"

namespace guanchao {

// What came of one service.
struct CheckRow {
    Check check;
    Service service;  // without a host where services.ini names none for the purpose
    Finding finding;
    qint64 milliseconds = 0;
    int status = 0;  // of the last answer
};

class CheckRun {
public:
    using Show = std::function<void(const CheckRow& row)>;
    // Before a service is asked.
    using Begin = std::function<void(const Check& check, const Service& service)>;

    // `http` keeps the pauses of the services; `pause` is between two of them beside that.
    CheckRun(
        HttpClient& http, const Clock& clock, std::chrono::milliseconds pause, Show show,
        Begin begin = [](const Check&, const Service&) {});

    // Raises nothing but Cancelled.
    QCoro::Task<> run(QList<Check> checks, std::stop_token stop);

private:
    QCoro::Task<> ask(Check check, Service service, std::stop_token stop);
    QString details() const;

    NotedHttp http_;
    const Clock& clock_;
    std::chrono::milliseconds pause_;
    Show show_;
    Begin begin_;
};

}  // namespace guanchao
