#include "monitor/alarm_desk.h"

#include <chrono>
#include <utility>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::seconds second(1);
constexpr int alarmRepeats = 20;

}  // namespace

AlarmDesk::AlarmDesk(const Stores& stores, const Globals& globals, const Clock& clock,
                     QuoteFeed& feed, Failures& failures, Sound& sound,
                     std::function<bool()> showMonitors)
    : sound_(sound),
      engine_(stores, globals, clock, feed, failures, std::move(showMonitors),
              [this](const QString& file) { ringLater(file); }) {
    Timer2_.setObjectName(u"Timer2"_s);
    Timer3_.setObjectName(u"Timer3"_s);
    for (QTimer* timer : {&Timer2_, &Timer3_}) {
        timer->setParent(this);
        timer->setInterval(second);
    }
    // Queued: a timer doesn't tick as long as its own tick is under way, and in a queued one a box
    // may stand for hours while the polls go on.
    connect(&Timer2_, &QTimer::timeout, this, &AlarmDesk::Timer2_Timer, Qt::QueuedConnection);
    connect(&Timer3_, &QTimer::timeout, this, &AlarmDesk::Timer3_Timer);
    sound_.whenStopped([this] { emit soundEnds(); });
}

AlarmDesk::~AlarmDesk() {
    sound_.whenStopped({});
}

void AlarmDesk::Timer2_Timer() {
    emit ticks();
    engine_.tick();
}

void AlarmDesk::ringLater(const QString& file) {
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
