// A wait in a run, which holds nothing meanwhile.
#pragma once

#include <QCoro/QCoroTask>
#include <chrono>
#include <stop_token>

namespace guanchao {

// Needs the event loop of its thread.
QCoro::Task<> pause(std::chrono::milliseconds time, std::stop_token stop);

}  // namespace guanchao
