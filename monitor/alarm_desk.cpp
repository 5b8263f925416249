#include "monitor/alarm_desk.h"

#include <chrono>
#include <utility>

#include "market/trading_session.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::seconds second(1);
constexpr int alarmRepeats = 20;

}  // namespace

AlarmDesk::AlarmDesk(const Stores& stores, Globals& globals, const Clock& clock, QuoteFeed& feed,
                     Failures& failures, Sound& sound, std::function<bool()> showMonitors)
    : globals_(globals),
      clock_(clock),
      sound_(sound),
      showMonitors_(std::move(showMonitors)),
      engine_(stores, globals, clock, feed, failures, *this) {
    Timer2_.setObjectName(u"Timer2"_s);
    Timer3_.setObjectName(u"Timer3"_s);
    for (QTimer* timer : {&Timer2_, &Timer3_}) {
        timer->setParent(this);
        timer->setInterval(second);
    }
    connect(&Timer2_, &QTimer::timeout, this, &AlarmDesk::Timer2_Timer);
    connect(&Timer3_, &QTimer::timeout, this, &AlarmDesk::Timer3_Timer);
    sound_.whenStopped([this] { emit soundEnds(); });
}

AlarmDesk::~AlarmDesk() {
    sound_.whenStopped({});
}

void AlarmDesk::Timer2_Timer() {
    emit ticks();
    followSession(globals_, clock_.now());
    if (shownFlag_ != globals_.jiankongkaiqi) {
        shownFlag_ = globals_.jiankongkaiqi;
        emit stateChanged();
    }
    engine_.tick();
}

void AlarmDesk::tell(const FiredMonitor& monitor) {
    forget(monitor);
    unseen_ << monitor;
    emit fired(monitor);
}

void AlarmDesk::forget(const FiredMonitor& monitor) {
    unseen_.removeIf(
        [&](const FiredMonitor& it) { return it.kind == monitor.kind && it.key == monitor.key; });
}

void AlarmDesk::showStale(const QDateTime& since) {
    staleSince_ = since;
    emit stateChanged();
}

QString AlarmDesk::staleWords() const {
    return staleSince_.isValid() ? staleSince_.toString(u"HH:mm:ss"_s) + u" 起没有新行情"_s
                                 : QString();
}

void AlarmDesk::stopSound() {
    sound_.stop();
    emit silenced();
}

void AlarmDesk::ring(const QString& file) {
    bofangwenjian_ = file;
    if (!Timer3_.isActive()) {
        Timer3_.start();
    }
}

void AlarmDesk::Timer3_Timer() {
    Timer3_.stop();
    sound_.play(bofangwenjian_, alarmRepeats);
    emit soundBegins(bofangwenjian_);
}

}  // namespace guanchao
