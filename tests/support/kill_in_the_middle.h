// Work that is killed in its middle.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>

namespace guanchao {

// In a process of its own, which is killed where the work calls what it is given.
inline void killInTheMiddle(const std::function<void(const std::function<void()>& middle)>& work) {
    int begun[2];
    ASSERT_EQ(pipe(begun), 0);
    const pid_t child = fork();
    if (child == 0) {
        work([&] {
            [[maybe_unused]] const auto told = write(begun[1], "x", 1);
            ::pause();
        });
        _exit(1);
    }
    char word = 0;
    ASSERT_EQ(read(begun[0], &word, 1), 1);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
}

}  // namespace guanchao
