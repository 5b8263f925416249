// What becomes of a run: its value, or what it raises.
#pragma once

#include <QCoreApplication>
#include <QCoro/QCoroTask>
#include <QTimer>
#include <chrono>
#include <stdexcept>

#include "tests/support/qt_printers.h"

namespace guanchao {

// Of one that nothing holds up.
template <typename T>
T outcomeOf(const QCoro::Task<T>& task) {
    if (!task.isReady()) {
        throw std::logic_error("the run waits");
    }
    return task.operator co_await().await_resume();
}

// What a step raises that can't be done.
template <typename Failure, typename Step>
Failure raisedBy(const Step& step) {
    try {
        step();
    } catch (const Failure& raised) {
        return raised;
    }
    throw std::logic_error("the step was done");
}

// Events happen until it is so. What never comes to be fails in place of hanging.
template <typename Condition>
void until(const Condition& isSo) {
    bool inVain = false;
    QTimer patience;
    patience.callOnTimeout([&inVain] { inVain = true; });
    patience.start(std::chrono::minutes(3));
    while (!isSo()) {
        if (inVain) {
            throw std::logic_error("it never came to be");
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

// Of one that waits: events happen until it has ended.
template <typename T>
T endOf(const QCoro::Task<T>& task) {
    until([&] { return task.isReady(); });
    return outcomeOf(task);
}

}  // namespace guanchao
