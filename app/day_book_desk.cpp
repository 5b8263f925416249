#include "app/day_book_desk.h"

#include <chrono>
#include <utility>

#include "base/worker.h"
#include "store/failure.h"
#include "themes/day_book.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The first look leaves the start of the program alone, and the day's copy.
constexpr std::chrono::seconds untilFirstLook(5);

}  // namespace

DayBookDesk::DayBookDesk(Environment& environment, std::function<void(const QString&)> show)
    : environment_(environment),
      show_(std::move(show)),
      looks_(environment.clock, [this] { look(); }),
      runs_(environment.failures) {
    looks_.setObjectName(u"dayBook"_s);
    looks_.setParent(this);
}

void DayBookDesk::start() {
    looks_.begin(untilFirstLook);
}

// While quotes are being written or stores restored the next look is soon enough, as it is after a
// failure.
void DayBookDesk::look() {
    if (!runs_.running() && environment_.globals.hqmang == 0) {
        runs_.start([this](std::stop_token stop) { return write(stop); });
    }
}

QCoro::Task<> DayBookDesk::write(std::stop_token stop) {
    const auto job = [stores = environment_.stores, now = environment_.clock.now()](const auto&) {
        return writeDay(stores, now);
    };
    QString failure;
    try {
        const std::optional<QDate> day = co_await inWorker(job, stop);
        if (day) {
            emit written();
        }
    } catch (const std::exception& raised) {
        failure = u"这一天的主题还没有记入复盘："_s + failureReason(raised);
    }
    show_(failure);
}

}  // namespace guanchao
