// The log: what the program has done and what has failed, for who looks for a fault later. What
// comes into it holds no key, no password and no words of the user's: base/log_words.
#pragma once

#include <QString>
#include <chrono>
#include <cstdint>
#include <optional>

namespace guanchao {

enum class LogKind : std::uint8_t { program, run, failure, service, toolkit };

// 运行, 失败, ...
QString wordOf(LogKind kind);

struct LogEntry {
    LogKind kind = LogKind::run;
    QString doing;  // what was being done
    QString happened;
    std::optional<std::chrono::milliseconds> took = {};
};

class Log {
public:
    virtual ~Log() = default;
    // Whatever becomes of the entry, it is nobody's trouble.
    virtual void write(const LogEntry& entry) = 0;
};

// Where entries go from now on; null: nowhere. The log outlives that.
void setLog(Log* log);

// From any thread. Whatever of its words may not be kept is left out. Raises nothing.
void writeLog(const LogEntry& entry) noexcept;

}  // namespace guanchao
