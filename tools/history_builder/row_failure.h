// How a row of a source fails: in Chinese, with its file and line.
#pragma once

#include <QString>
#include <stdexcept>

namespace guanchao {

[[noreturn]] inline void fail(const QString& words) {
    throw std::runtime_error(words.toStdString());
}

// Whatever `read` raises names the line.
template <typename Read>
auto atLine(const QString& path, qint64 line, const Read& read) {
    try {
        return read();
    } catch (const std::runtime_error& failure) {
        fail(path + QStringLiteral(" 第 ") + QString::number(line) + QStringLiteral(" 行：") +
             QString::fromUtf8(failure.what()));
    }
}

}  // namespace guanchao
