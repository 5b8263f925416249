// HttpClient over another, for a run that a window shows: while an answer is long in coming the
// step says how long it is waited for, in place of a time left that can't come true, and where the
// next service is asked, it says so.
#pragma once

#include <QTimer>
#include <functional>

#include "base/run_progress.h"
#include "platform/clock.h"
#include "platform/http_client.h"

namespace guanchao {

class AnswerWait : public HttpClient {
public:
    using Show = std::function<void(const RunProgress&)>;

    // The window `owner` outlives it.
    AnswerWait(HttpClient& http, const Clock& clock, QObject& owner, Show show);

    // What the run itself tells.
    void show(const RunProgress& progress);

    QCoro::Task<HttpReply> get(Service service, QString path, std::stop_token stop) override;
    void complain(const Service& service, const QString& reason) override;

private:
    void begin(const Service& service);
    void look();
    QString toldStep() const;

    HttpClient& http_;
    const Clock& clock_;
    Show show_;
    RunProgress progress_;
    Service asked_;
    std::chrono::milliseconds since_{0};
    QTimer looks_;
};

}  // namespace guanchao
