#include "app/daily_backup.h"

#include <chrono>
#include <utility>

#include "base/worker.h"
#include "exchange/store_backup.h"
#include "store/failure.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The first look leaves the start of the program alone.
constexpr std::chrono::seconds untilFirstLook(3);

}  // namespace

DailyBackup::DailyBackup(Environment& environment, std::function<void(const QString&)> show)
    : environment_(environment),
      show_(std::move(show)),
      looks_(environment.clock, [this] { look(); }),
      runs_(environment.failures) {
    looks_.setObjectName(u"dailyBackup"_s);
    looks_.setParent(this);
}

void DailyBackup::start() {
    looks_.begin(untilFirstLook);
}

// While stores are being written or restored the next look is soon enough.
void DailyBackup::look() {
    if (!runs_.running() && environment_.globals.hqmang == 0) {
        runs_.start([this](std::stop_token stop) { return makeTodays(stop); });
    }
}

QCoro::Task<> DailyBackup::makeTodays(std::stop_token stop) {
    const auto job = [stores = environment_.stores,
                      folder = copiesFolder(environment_.applicationFolder),
                      day = environment_.clock.now().date()](const auto& work) {
        return makeDailyCopy(stores, folder, day, freeBytesOn, [&work] { work.endIfAbandoned(); });
    };
    QString failure;
    try {
        co_await inWorker(job, stop);
    } catch (const std::exception& raised) {
        failure = u"今天还没有备份："_s + failureReason(raised);
        looks_.noteFailure();
    }
    show_(failure);
}

}  // namespace guanchao
