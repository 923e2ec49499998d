#pragma once

#include <cstdint>
#include <string>

namespace nettlecap {

/// As it is written in Brazil: 1.234.567. `number` is not negative.
std::string groupedNumber(std::int64_t number);

}  // namespace nettlecap
