#include "research/research_run.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

bool refusesWhileWriting(const Globals& globals, Dialogs& dialogs, const QString& action) {
    if (globals.hqmang > 0) {
        dialogs.tell(u"正在写入数据，请稍后再"_s + action + u'。');
    }
    return globals.hqmang > 0;
}

ResearchRun::ResearchRun(EventPump& pump, Show show)
    : show_(std::move(show)),
      run_(pump, u"另一次计算正在进行，请等它结束或先停止它。"_s, [this] { beginOrEnd(); }) {}

void ResearchRun::beginOrEnd() {
    if (run_.running()) {
        progress_ = ResearchProgress();
    }
    progress_.running = run_.running();
    show_(progress_);
}

void ResearchRun::yieldWhilePreparing() {
    yield();
    if (stopped()) {
        run_.cancel();
        yield();
    }
}

void ResearchRun::stop() {
    if (stopped()) {
        return;
    }
    progress_.stopping = true;
    show_(progress_);
}

void ResearchRun::show(QString ResearchProgress::*word, const QString& text) {
    progress_.*word = text;
    show_(progress_);
}

}  // namespace guanchao
