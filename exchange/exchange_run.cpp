#include "exchange/exchange_run.h"

#include "base/activity.h"
#include "base/time_left.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

void ExchangeRun::requireIdle(const QString& activity) const {
    if (running()) {
        const Activity refused(activity);
        throw OperationError(u"另一次导入或导出正在进行，请等它结束。"_s);
    }
}

void ExchangeRun::begin(const QString& name) {
    wanted_ = std::stop_source();
    since_.start();
    shown_ = {.running = true, .name = name, .progress = {}, .timeLeft = {}};
    show_(shown_);
}

void ExchangeRun::show(const ExchangeProgress& progress) {
    shown_.progress = progress;
    shown_.timeLeft = timeLeftWords(std::chrono::nanoseconds(since_.nsecsElapsed()), progress.done,
                                    progress.total);
    show_(shown_);
}

QString ExchangeRun::counts() const {
    return u"%1 / %2 步"_s.arg(shown_.progress.done).arg(shown_.progress.total);
}

void ExchangeRun::end() {
    shown_ = {};
    show_(shown_);
}

}  // namespace guanchao
