// A wait in a run, which holds nothing meanwhile.
#pragma once

#include <QCoro/QCoroTask>
#include <chrono>
#include <functional>
#include <stop_token>

namespace guanchao {

// Needs the event loop of its thread.
QCoro::Task<> pause(std::chrono::milliseconds time, std::stop_token stop);

// pause(), or what a test puts in its place.
using Wait = std::function<QCoro::Task<>(std::chrono::milliseconds, std::stop_token)>;

}  // namespace guanchao
