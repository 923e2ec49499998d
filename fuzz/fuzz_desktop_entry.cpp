#include "platform/linux/DesktopEntry.h"

#include <cstdint>
#include <cstdlib>
#include <unicode/utf8.h>

// A desktop entry: whatever the bytes are, what is made of them is text, of no greater length,
// and the same each time.

namespace {

using namespace nettlecap;

void require(bool holds) {
    if (!holds) std::abort();
}

bool isText(std::string_view bytes) {
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    const auto size = static_cast<std::int32_t>(bytes.size());
    for (std::int32_t at = 0; at < size;) {
        UChar32 character = 0;
        U8_NEXT(data, at, size, character);
        if (character < 0) return false;
    }
    return true;
}

void requireSense(const DesktopEntry& entry) {
    require(entry.identifier.empty() && !entry.name.empty());
    for (const std::string* value : {&entry.name, &entry.startupWindowClass, &entry.program})
        require(isText(*value));
    for (const std::string& category : entry.categories) require(isText(category) && !category.empty());
    require(entry.program.find('/') == std::string::npos);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view file(reinterpret_cast<const char*>(data), size);
    const MessageLocale brazilian("pt_BR.UTF-8@euro");
    const auto entry = DesktopEntry::parse(file, brazilian);
    if (entry) requireSense(*entry);
    require(DesktopEntry::parse(file, brazilian) == entry);
    (void)MessageLocale(file).rank(file);
    if (const auto exec = DesktopEntry::valueOf("Exec", file)) {
        require(exec->size() <= 3 * size);
        require(DesktopEntry::executableOf(*exec).size() <= exec->size());
    }
    return 0;
}
