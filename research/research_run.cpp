#include "research/research_run.h"

#include <QScopeGuard>

#include "base/run_note.h"
#include "base/time_left.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

bool refusesWhileWriting(const Globals& globals, Dialogs& dialogs, const QString& action) {
    if (globals.hqmang > 0) {
        dialogs.tell(u"正在写入数据，请稍后再"_s + action + u'。');
    }
    return globals.hqmang > 0;
}

void ResearchWork::begin(int total) {
    progress_.done = 0;
    progress_.total = total;
    progress_.timeLeft.clear();
    sinceBegin_.start();
    work_.tell(progress_);
}

void ResearchWork::done(int count) {
    progress_.done = count;
    progress_.timeLeft = timeLeftWords(std::chrono::nanoseconds(sinceBegin_.nsecsElapsed()),
                                       progress_.done, progress_.total);
    work_.tell(progress_);
}

void ResearchWork::reading(int count, int total) {
    if (count == 0) {
        begin(total);
    }
    done(count);
    endIfStopped();
}

void ResearchWork::show(QString ResearchProgress::*word, const QString& text) {
    progress_.*word = text;
    work_.tell(progress_);
}

QCoro::Task<bool> ResearchRun::run(QString name, Job job, std::stop_token stop) {
    requireIdle(name);
    wanted_ = std::stop_source();
    progress_ = {};
    progress_.running = true;
    show_(progress_);
    RunNote note(name, stop);
    const auto end = qScopeGuard([this] {
        progress_.running = false;
        show_(progress_);
    });
    const auto inThread = [name, job](Work<ResearchProgress>& work) {
        Activity activity(name);
        ResearchWork own(work);
        return job(own, activity);
    };
    const Show show = [this](const ResearchProgress& words) { take(words); };
    const std::optional<bool> complete =
        co_await inWorker<ResearchProgress>(inThread, show, wanted_.get_token(), stop);
    const QString counts = u"%1 / %2"_s.arg(progress_.done).arg(progress_.total);
    note.ended(counts, !complete);
    co_return complete.value_or(false);
}

void ResearchRun::requireIdle(const QString& name) const {
    const Activity activity(name);
    if (running()) {
        throw OperationError(u"另一次计算正在进行，请等它结束或先停止它。"_s);
    }
}

void ResearchRun::take(ResearchProgress words) {
    words.running = true;
    words.stopping = progress_.stopping;
    progress_ = words;
    show_(progress_);
}

void ResearchRun::stop() {
    if (!progress_.stopping) {
        progress_.stopping = true;
        wanted_.request_stop();
        show_(progress_);
    }
}

}  // namespace guanchao
