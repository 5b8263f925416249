// The run of an export or an import as its window sees it: one at a time, in a worker. It tells how
// far the job is and lets the user stop it. Progress counts rows of tables, lines of a file and
// blocks of a store that is copied.
#pragma once

#include <QElapsedTimer>
#include <QScopeGuard>
#include <QString>
#include <functional>

#include "base/run_note.h"
#include "base/worker.h"

namespace guanchao {

struct ExchangeProgress {
    int done = 0;
    int total = 0;
    QString jc;  // the short name of the stock in work, where there is one
};

using ExchangeWork = Work<ExchangeProgress>;

// For a job: what it tells of its steps. Each is small; a stopped job ends at the end of one.
class ExchangeSteps {
public:
    explicit ExchangeSteps(ExchangeWork& work) : work_(work) {}

    void expect(int steps) { progress_.total += steps; }
    void setJc(const QString& jc) { progress_.jc = jc; }
    void stepDone() {
        ++progress_.done;
        work_.tell(progress_);
        work_.endIfStopped();
    }
    // Within a step.
    void endIfStopped() const { work_.endIfStopped(); }

private:
    ExchangeWork& work_;
    ExchangeProgress progress_;
};

// What a window shows of its run.
struct ShownExchange {
    bool running = false;
    QString name;  // 导出数据
    ExchangeProgress progress;
    QString timeLeft;  // empty while it can't be told
};

// What is told of an import that the user has stopped: nothing of it has been written.
inline const QString importStopped = QStringLiteral("导入已停止，没有导入任何数据。");

class ExchangeRun {
public:
    using Show = std::function<void(const ShownExchange&)>;

    // `show` is called at the beginning, every so often and at the end, then with `running` false.
    explicit ExchangeRun(Show show) : show_(std::move(show)) {}

    // Gives what the job gives, or nothing if the user has stopped it. Raises what it raises, and
    // OperationError, which names this run, if another is under way. `logged` tells the log what
    // has come to its end.
    template <typename Job>
    QCoro::Task<std::optional<std::invoke_result_t<Job, ExchangeWork&>>> run(QString name, Job job,
                                                                             std::stop_token stop,
                                                                             QString logged = {}) {
        using Given = std::optional<std::invoke_result_t<Job, ExchangeWork&>>;
        requireIdle(name);
        begin(name);
        RunNote note(name, stop);
        const auto end = qScopeGuard([this] { this->end(); });
        const std::function<void(const ExchangeProgress&)> tell =
            [this](const ExchangeProgress& progress) { show(progress); };
        const std::stop_token wanted = wanted_.get_token();
        Given given = co_await inWorker<ExchangeProgress>(std::move(job), tell, wanted, stop);
        note.ended(given && !logged.isEmpty() ? counts() + u'，' + logged : counts(), !given);
        co_return given;
    }

    // The user wants it to end.
    void stop() { wanted_.request_stop(); }
    bool running() const { return shown_.running; }

    // Raises OperationError while a run is under way, for what that would get in the way of.
    void requireIdle(const QString& activity) const;

private:
    void begin(const QString& name);
    QString counts() const;
    void show(const ExchangeProgress& progress);
    void end();

    Show show_;
    ShownExchange shown_;
    std::stop_source wanted_;
    QElapsedTimer since_;
};

}  // namespace guanchao
