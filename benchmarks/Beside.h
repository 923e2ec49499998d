#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <vector>

namespace nettlecap {

inline double median(std::vector<double> values) {
    std::ranges::nth_element(values, values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2));
    return values[values.size() / 2];
}

template <class Work>
double secondsOf(Work work) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Runs work and floor in turns, so that whatever else the machine does falls on both alike,
/// for a second or three rounds. `prepare` goes before each work, and is not measured. Tells
/// medians and least of both, and as times_floor the ratio of the medians.
template <class Floor, class Work, class Prepare>
void runBeside(benchmark::State& state, Floor floor, Work work, Prepare prepare) {
    constexpr std::size_t fewestRounds = 3;
    constexpr std::size_t mostRounds = 1000;
    constexpr double patience = 1;  // seconds
    std::vector<double> floors;
    std::vector<double> works;
    for ([[maybe_unused]] auto iteration : state) {
        double spent = 0;
        while (works.size() < fewestRounds || (works.size() < mostRounds && spent < patience)) {
            floors.push_back(secondsOf(floor));
            prepare();
            works.push_back(secondsOf(work));
            spent += floors.back() + works.back();
        }
        state.SetIterationTime(median(works));
    }
    state.counters["rounds"] = static_cast<double>(works.size());
    state.counters["floor_us"] = 1e6 * median(floors);
    state.counters["floor_least_us"] = 1e6 * *std::ranges::min_element(floors);
    state.counters["work_us"] = 1e6 * median(works);
    state.counters["work_least_us"] = 1e6 * *std::ranges::min_element(works);
    state.counters["times_floor"] = median(works) / median(floors);
}

template <class Floor, class Work>
void runBeside(benchmark::State& state, Floor floor, Work work) {
    runBeside(state, floor, work, [] {});
}

}  // namespace nettlecap
