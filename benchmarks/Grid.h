#pragma once

#include "Histories.h"

#include <benchmark/benchmark.h>

namespace nettlecap {

/// From 50 short texts to as many and as long ones as make 500 MB together, with pictures and
/// without.
inline void overEveryHistory(benchmark::internal::Benchmark* it) {
    constexpr std::int64_t most = 500'000'000;  // bytes
    it->ArgNames({"entries", "bytes", "pictures"})->UseManualTime()->Iterations(1);
    it->Unit(benchmark::kMillisecond);
    for (const std::int64_t pictures : {0, 1})
        for (const std::int64_t bytes : {100, 1000, 100'000})
            for (const std::int64_t entries : {50, 500, 5000, 50'000})
                if (entries * bytes <= most) it->Args({entries, bytes, pictures});
}

inline HistoryShape shapeOf(const benchmark::State& state) {
    return {.entries = static_cast<std::size_t>(state.range(0)),
            .bytes = static_cast<std::size_t>(state.range(1)),
            .hasPictures = state.range(2) != 0};
}

}  // namespace nettlecap
