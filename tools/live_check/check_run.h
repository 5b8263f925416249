// Carries checks out, one request at a time, and writes a line a service as a table.
#pragma once

#include <QTextStream>
#include <chrono>

#include "services/polite_http.h"
#include "tools/live_check/live_checks.h"

namespace guanchao {

class CheckRun {
public:
    CheckRun(HttpClient& web, const Clock& clock, QTextStream& out, std::chrono::milliseconds pause)
        : raw_(web),
          polite_(raw_, clock),
          seen_(polite_),
          clock_(clock),
          out_(out),
          pause_(pause) {}

    // The purposes that have services, none of which answers.
    QCoro::Task<QStringList> run(QList<Check> checks);

private:
    QCoro::Task<bool> ask(Check check, Service service);
    void writeRow(const QStringList& cells);
    QString details() const;

    NotedHttp raw_;
    PoliteHttp polite_;
    NotedHttp seen_;  // as the classes of the program see it
    const Clock& clock_;
    QTextStream& out_;
    std::chrono::milliseconds pause_;
};

}  // namespace guanchao
