#include "model/FileSize.h"

#include "model/GroupedNumber.h"

#include <array>
#include <cassert>
#include <string_view>

namespace nettlecap {

namespace {

struct Unit {
    std::string_view name;
    std::int64_t bytes;
    int decimals;
};

constexpr std::array<Unit, 5> units = {{
    {"KB", 1'000, 0},
    {"MB", 1'000'000, 1},
    {"GB", 1'000'000'000, 2},
    {"TB", 1'000'000'000'000, 2},
    {"PB", 1'000'000'000'000'000, 2},
}};

/// How much of a unit the last decimal that it is told with stands for, in bytes.
std::int64_t step(const Unit& unit) {
    std::int64_t result = unit.bytes;
    for (int decimal = 0; decimal < unit.decimals; ++decimal) result /= 10;
    return result;
}

/// Halves go to the even neighbour.
std::int64_t rounded(std::int64_t bytes, std::int64_t step) {
    const std::int64_t whole = bytes / step;
    const std::int64_t rest = bytes % step;
    const std::int64_t half = step / 2;
    return rest > half || (rest == half && whole % 2 == 1) ? whole + 1 : whole;
}

std::string decimals(std::int64_t fraction, std::int64_t stepsInOne) {
    if (fraction == 0) return {};
    std::string digits = std::to_string(stepsInOne + fraction);  // begins with a one, then all decimals
    digits.front() = ',';
    while (digits.back() == '0') digits.pop_back();
    return digits;
}

}  // namespace

std::string fileSize(std::int64_t bytes) {
    assert(bytes >= 0);
    if (bytes == 0) return "Zero KB";
    if (bytes == 1) return "1 byte";
    if (bytes < units.front().bytes) return std::to_string(bytes) + " bytes";

    // What would round to a thousand of a unit is one of the next.
    const Unit* unit = units.data();
    while (unit != &units.back() && rounded(bytes, step(*unit)) >= 1'000 * (unit->bytes / step(*unit)))
        ++unit;
    const std::int64_t stepsInOne = unit->bytes / step(*unit);
    const std::int64_t steps = rounded(bytes, step(*unit));
    return groupedNumber(steps / stepsInOne) + decimals(steps % stepsInOne, stepsInOne) + ' ' +
           std::string(unit->name);
}

}  // namespace nettlecap
