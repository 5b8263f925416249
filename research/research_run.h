// One run of historical research: the words that it shows, the events that it lets happen, and its
// two early ends: the user stops it between two days, or its window closes. Form12 owns one for all
// of its buttons, so that no two run at once.
#pragma once

#include <QString>
#include <functional>

#include "base/cancellable_run.h"
#include "base/globals.h"
#include "platform/dialogs.h"

namespace guanchao {

// True, and told to the user, while an import or a download writes: a run would wait for this
// program's own lock. `action` ends the words: 选股.
bool refusesWhileWriting(const Globals& globals, Dialogs& dialogs, const QString& action);

// The words of Form12 while a run goes on and after it.
struct ResearchProgress {
    bool running = false;
    bool stopping = false;  // the user wants it to end
    QString caption;        // of the window: 计算到时间: and the day; empty: as it was
    QString label2;         // the theme that is looked at, or 代码总数: and the number
    QString label3;         // 选中题材: and the theme taken, or 当前代码: and the code
    QString label6;         // the day
};

class ResearchRun {
public:
    using Show = std::function<void(const ResearchProgress&)>;

    // `show` is called at the beginning, with each new word and at the end, then with `running`
    // false and the last words.
    ResearchRun(EventPump& pump, Show show);

    // Does the job, up to its end or until it is cancelled; what was committed stays. Raises what
    // the job raises, and OperationError if a run is under way.
    void run(const std::function<void()>& job) { run_.run(job); }

    // For the job.
    void showCaption(const QString& text) { show(&ResearchProgress::caption, text); }
    void showLabel2(const QString& text) { show(&ResearchProgress::label2, text); }
    void showLabel3(const QString& text) { show(&ResearchProgress::label3, text); }
    void showLabel6(const QString& text) { show(&ResearchProgress::label6, text); }
    // Events may happen. They come at every row of a history, some microseconds apart, so the pump
    // lets only those through that the user could notice. Doesn't return from a cancelled run.
    void yield() { run_.letEventsHappenIfDue(); }
    // The same while there is nothing yet that a stop could leave half done: it cancels then.
    void yieldWhilePreparing();
    // True once the user wants the run to end where it loses nothing.
    bool stopped() const { return progress_.stopping; }

    // For the window: end after the day or code in work.
    void stop();
    // For the closing window, which must live on until run() has returned: end at the next yield.
    void cancel() { run_.cancel(); }
    bool running() const { return run_.running(); }

private:
    void beginOrEnd();
    void show(QString ResearchProgress::*word, const QString& text);

    Show show_;
    CancellableRun run_;
    ResearchProgress progress_;
};

}  // namespace guanchao
