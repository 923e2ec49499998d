#include "model/StoreOperations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace nettlecap {
namespace {

class StoreOperationsTest : public testing::TestWithParam<unsigned> {};

/// Ten sequences; a failure names the seed and the fewest operations that still fail.
TEST_P(StoreOperationsTest, FollowTheRulesInAnyOrderAndOnABadDisk) {
    std::mt19937 random(GetParam());
    const auto byte = [&] { return static_cast<std::uint8_t>(random() % 256); };
    for (int sequence = 0; sequence < 10; ++sequence) {
        StoreOperations operations(120);
        std::ranges::generate(operations,
                              [&] { return StoreOperation{.kind = byte(), .a = byte(), .b = byte()}; });
        if (!whatGoesWrong(operations)) continue;
        const StoreOperations few = shrunk(operations);
        FAIL() << "seed " << GetParam() << ", " << whatGoesWrong(few).value_or("") << ": " << described(few);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, StoreOperationsTest, testing::Range(1U, 21U));

}  // namespace
}  // namespace nettlecap
