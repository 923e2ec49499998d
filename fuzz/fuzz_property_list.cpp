#include "platform/linux/PropertyList.h"

#include <cstdint>
#include <cstdlib>

// A property list: whatever the bytes are, the reader ends, says the same again, and says
// nothing once a second document follows.

namespace {

using namespace nettlecap;

void require(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string file(reinterpret_cast<const char*>(data), size);
    const auto flags = flagsOfPropertyList(file);
    require(flagsOfPropertyList(file) == flags);
    require(flags.empty() || flagsOfPropertyList(file + "<plist/>").empty());
    require(flags.empty() || flagsOfPropertyList(file.substr(0, size / 2)).empty());
    return 0;
}
