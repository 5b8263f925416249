// Spans of time in words: how long a run still takes, judged by what it has taken so far, and how
// long ago something was.
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

// 最多还要 12 秒, 最多还要 3 分钟.
QString atMostWords(std::chrono::seconds left);

// 刚刚, 3 分钟前, 2 小时前, 5 天前
QString ageWords(qint64 seconds);

}  // namespace guanchao
