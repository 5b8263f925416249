// One measurement of the program beside its limit, taken by turns in one run, so that both see the
// same machine at the same moment.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

namespace guanchao {

inline double seconds(const std::function<void()>& job) {
    const auto begin = std::chrono::steady_clock::now();
    job();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

inline double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + static_cast<long>(values.size() / 2),
                     values.end());
    return values[values.size() / 2];
}

// Reports the medians in milliseconds and their ratio; the benchmark's own time is the program's.
// `before` does each turn what is not measured.
inline void compare(
    benchmark::State& state, const std::function<void()>& limit,
    const std::function<void()>& program, const std::function<void()>& before = [] {}) {
    std::vector<double> limits;
    std::vector<double> programs;
    for ([[maybe_unused]] auto turn : state) {
        before();
        limits.push_back(seconds(limit));
        programs.push_back(seconds(program));
        state.SetIterationTime(programs.back());
    }
    state.counters["limit_ms"] = median(limits) * 1000;
    state.counters["program_ms"] = median(programs) * 1000;
    state.counters["ratio"] = median(programs) / median(limits);
}

// Reports the median in milliseconds of what has only a bound in time.
inline void measure(benchmark::State& state, const std::function<void()>& program) {
    std::vector<double> programs;
    for ([[maybe_unused]] auto turn : state) {
        programs.push_back(seconds(program));
        state.SetIterationTime(programs.back());
    }
    state.counters["program_ms"] = median(programs) * 1000;
}

}  // namespace guanchao
