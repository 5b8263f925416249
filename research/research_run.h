// One run of historical research, in a thread of its own: the words that it shows, and its two
// early ends, by the user between two days and by its window that closes. Form12 and Form37 own one
// each for all of their buttons, so that no two run at once in a window.
#pragma once

#include <QCoro/QCoroTask>
#include <QElapsedTimer>
#include <QString>
#include <functional>
#include <stop_token>

#include "base/activity.h"
#include "base/globals.h"
#include "base/worker.h"
#include "platform/dialogs.h"

namespace guanchao {

// True, and told to the user, while an import or a download writes. `action` ends the words: 选股.
bool refusesWhileWriting(const Globals& globals, Dialogs& dialogs, const QString& action);

// What a window shows of a run while it goes on and after it.
struct ResearchProgress {
    bool running = false;
    bool stopping = false;  // the user wants it to end
    QString caption;        // of the window: 计算到时间: and the day; empty: as it was
    QString subject;        // the theme that is looked at, or 代码总数: and the number
    QString step;           // 选中题材: and the theme taken, or 当前代码: and the code
    QString day;            // yyyy-MM-dd, of the run
    int done = 0;           // days or codes, or rows that are read before
    int total = 0;          // 0 while it prepares
    QString timeLeft;       // 剩余约 n 秒
};

// For a job: each word is told as it comes, with those before it.
class ResearchWork {
public:
    explicit ResearchWork(Work<ResearchProgress>& work) : work_(work) {}

    void showCaption(const QString& text) { show(&ResearchProgress::caption, text); }
    void showSubject(const QString& text) { show(&ResearchProgress::subject, text); }
    void showStep(const QString& text) { show(&ResearchProgress::step, text); }
    void showDay(const QString& text) { show(&ResearchProgress::day, text); }
    // So many days, codes or rows are to come; so many of them, or one more, are done.
    void begin(int total);
    void done(int count);
    void oneDone() { done(progress_.done + 1); }
    // For what reads so many rows and tells how many it has, the first time none: ends the run with
    // the reading once the user wants that.
    void reading(int done, int total);

    // True once the user wants the run to end where it loses nothing.
    bool stopped() const { return work_.isToStop(); }
    // Between small steps: doesn't return if the window is gone.
    void endIfAbandoned() const { work_.endIfAbandoned(); }
    // The same while there is nothing yet that a stop could leave half done.
    void endIfStopped() const { work_.endIfStopped(); }

private:
    void show(QString ResearchProgress::*word, const QString& text);

    Work<ResearchProgress>& work_;
    ResearchProgress progress_;
    QElapsedTimer sinceBegin_;
};

class ResearchRun {
public:
    using Show = std::function<void(const ResearchProgress&)>;
    // In the thread: tells whether nothing was left out. The activity is that of the run.
    using Job = std::function<bool(ResearchWork& work, Activity& activity)>;

    // `show` is called at the beginning, with new words and at the end, then with `running` false
    // and the last words.
    explicit ResearchRun(Show show) : show_(std::move(show)) {}

    // Does the job, which takes what it needs by value, and gives what it tells; false if it was
    // stopped. What was committed stays. Raises what the job raises, and OperationError if a run is
    // under way.
    QCoro::Task<bool> run(QString name, Job job, std::stop_token stop);

    // For the window: end after the day or code in work.
    void stop();
    bool running() const { return progress_.running; }
    bool stopping() const { return progress_.running && progress_.stopping; }

private:
    void requireIdle(const QString& name) const;
    void take(ResearchProgress words);

    Show show_;
    ResearchProgress progress_;
    std::stop_source wanted_;
};

}  // namespace guanchao
