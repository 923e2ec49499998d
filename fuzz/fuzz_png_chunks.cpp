#include "platform/linux/PngChunks.h"

#include <cstdlib>
#include <string>

// The look at a PNG before its decoder: it reads nothing beyond the bytes, believes no size
// that is not there, and one changed bit of what it took for undamaged is damage.

namespace {

using namespace nettlecap;

void require(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string bytes(reinterpret_cast<const char*>(data), size);
    const auto pixels = png::sizeOf(bytes);
    require(!pixels || size >= png::headerSize);
    const bool isUndamaged = png::isUndamaged(bytes);
    require(png::isUndamaged(bytes) == isUndamaged);
    if (!isUndamaged || !pixels) return 0;
    require(!png::isUndamaged(std::string_view(bytes).substr(0, png::headerSize)));
    bytes[20] = static_cast<char>(bytes[20] ^ 1);  // of the width, which the first checksum covers
    require(!png::isUndamaged(bytes));
    return 0;
}
