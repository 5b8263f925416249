// One run of an export or an import: how far it is, the events that it lets happen, and its end
// when the window to which it belongs is closed. Progress counts rows of tables or lines of a file.
#pragma once

#include <QString>
#include <functional>

#include "base/cancellable_run.h"
#include "store/connection.h"

namespace guanchao {

struct ExchangeProgress {
    bool running = false;
    int done = 0;
    int total = 0;
    QString jc;  // the short name of the stock in work, where there is one
};

// What is told of an import that was cancelled: its transaction has been rolled back.
inline const QString importStopped = QStringLiteral("导入已停止，没有导入任何数据。");

class ExchangeRun {
public:
    using Show = std::function<void(const ExchangeProgress&)>;

    // `show` is called at the beginning, every so often and at the end, then with `running` false.
    ExchangeRun(EventPump& pump, Show show);

    // Does the job. False if it was cancelled, which leaves its open transactions rolled back.
    // Raises what the job raises, and OperationError if a run is under way.
    bool run(const std::function<void()>& job) { return run_.run(job); }

    // For the job: more rows are to come; one row is done; a part of a row is done. The last two
    // let events happen now and then, and don't return from a run that has been cancelled.
    void expect(int rows) { progress_.total += rows; }
    void rowDone();
    void breathe();
    void setJc(const QString& jc) { progress_.jc = jc; }

    // The window must live on until run() has returned.
    void cancel() { run_.cancel(); }
    bool running() const { return run_.running(); }

    // Raises OperationError while a run is under way: two would wait for each other's locks.
    void requireIdle() const { run_.requireIdle(); }

private:
    void beginOrEnd();

    Show show_;
    CancellableRun run_;
    ExchangeProgress progress_;
    int steps_ = 0;
};

// A transaction that stays open while events happen: other windows can read all the while.
Transaction longTransaction(Connection& connection);

}  // namespace guanchao
