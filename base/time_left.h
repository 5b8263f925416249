// How long a run still takes, judged by what it has taken so far.
#pragma once

#include <QString>
#include <chrono>
#include <optional>

namespace guanchao {

// Nothing as long as too little is done to judge by, and when nothing is left.
std::optional<std::chrono::seconds> timeLeft(std::chrono::nanoseconds elapsed, qint64 done,
                                             qint64 total);

// "剩余约 12 秒" or "剩余约 3 分钟", rounded up.
QString timeLeftWords(std::chrono::seconds left);

// The same; empty where the time left can't be told.
QString timeLeftWords(std::chrono::nanoseconds elapsed, qint64 done, qint64 total);

}  // namespace guanchao
