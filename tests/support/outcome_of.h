// What has become of a run that nothing holds up: its value, or what it raises.
#pragma once

#include <QCoro/QCoroTask>
#include <stdexcept>

namespace guanchao {

template <typename T>
T outcomeOf(const QCoro::Task<T>& task) {
    if (!task.isReady()) {
        throw std::logic_error("the run waits");
    }
    return task.operator co_await().await_resume();
}

}  // namespace guanchao
