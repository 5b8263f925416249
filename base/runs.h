// The runs of one owner: coroutines that go on beside each other while their window lives, and end
// with it.
#pragma once

#include <QCoro/QCoroTask>
#include <exception>
#include <functional>
#include <list>
#include <memory>
#include <stop_token>

#include "base/later.h"

namespace guanchao {

// Where failures of operations end: each is told, and the program goes on.
class Failures {
public:
    virtual ~Failures() = default;
    virtual void report(const std::exception& failure) = 0;

    // Does the job and reports its failure.
    void guard(const std::function<void()>& job);
};

// A run awaits with its stop token, and so goes no further than its next await once it is stopped.
// An owner declares its runs last: what they touch must still be there when they end.
class Runs {
public:
    using Job = std::function<QCoro::Task<>(std::stop_token stop)>;

    explicit Runs(Failures& failures) : failures_(failures) {}
    ~Runs() { stop(); }
    Runs(const Runs&) = delete;
    Runs& operator=(const Runs&) = delete;

    // Begins the job at once. A failure of it is reported; a stop is none.
    void start(Job job);

    // Those that wait have ended when this returns; one that calls this ends at its next await.
    void stop();

    // The same, and waits for those that are in the middle of a step.
    QCoro::Task<> end(std::stop_token stop);

    bool running() const { return !underWay_->sources.empty(); }

private:
    struct UnderWay {
        std::list<std::stop_source> sources;
        std::shared_ptr<Later<bool>> lastEnded;  // while that is waited for
    };

    static QCoro::Task<> carryOut(Job job, std::stop_source source,
                                  std::shared_ptr<UnderWay> underWay, Failures& failures);
    static void leave(UnderWay& underWay, const std::stop_source& source);

    Failures& failures_;
    std::shared_ptr<UnderWay> underWay_ = std::make_shared<UnderWay>();
};

}  // namespace guanchao
