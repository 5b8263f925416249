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

// How far a run is as it asks the next service.
struct CheckStep {
    int asked = 0;
    int total = 0;
    std::chrono::seconds atMost{0};  // for all that is left, should nobody answer
};

class CheckRun {
public:
    using Show = std::function<void(const CheckRow& row)>;
    // Before a service is asked.
    using Begin =
        std::function<void(const Check& check, const Service& service, const CheckStep& step)>;

    // `http` keeps the pauses of the services; `pause` is between two of them beside that.
    CheckRun(
        HttpClient& http, const Clock& clock, std::chrono::milliseconds pause, Show show,
        Begin begin = [](const Check&, const Service&, const CheckStep&) {});

    // A service that is to be given all the time it likes gets half a minute. Raises nothing but
    // Cancelled.
    QCoro::Task<> run(QList<Check> checks, std::stop_token stop);

private:
    QCoro::Task<> ask(Check check, Service service, std::stop_token stop);
    std::chrono::milliseconds longestOf(const Service& service) const;
    QString details() const;

    NotedHttp http_;
    const Clock& clock_;
    std::chrono::milliseconds pause_;
    Show show_;
    Begin begin_;
};

}  // namespace guanchao
