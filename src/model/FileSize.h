#pragma once

#include <cstdint>
#include <string>

namespace nettlecap {

/// A number of bytes as a file's size is told in Brazilian Portuguese ("Zero KB", "1,5 MB"):
/// decimal units, and no decimals that are zero. `bytes` is not negative.
std::string fileSize(std::int64_t bytes);

}  // namespace nettlecap
