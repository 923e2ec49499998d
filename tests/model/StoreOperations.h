#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace nettlecap {

/// One thing that happens to a store; any three bytes are one.
struct StoreOperation {
    std::uint8_t kind = 0;
    std::uint8_t a = 0;
    std::uint8_t b = 0;
};

using StoreOperations = std::vector<StoreOperation>;

/// Does them to a store and to the rules told plainly, side by side; says after which one
/// the two part, and in what.
std::optional<std::string> whatGoesWrong(std::span<const StoreOperation> operations);

/// As few of them as still go wrong.
StoreOperations shrunk(StoreOperations operations);

std::string described(std::span<const StoreOperation> operations);

}  // namespace nettlecap
