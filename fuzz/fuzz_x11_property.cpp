#include "platform/linux/x11/PasteboardTargets.h"
#include "platform/linux/x11/PropertyText.h"

#include <cstdlib>

using namespace nettlecap;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

void readAsText(std::string_view bytes) {
    const std::string text = propertyText::validUtf8(bytes);
    require(propertyText::validUtf8(text) == text);
    require(text.size() <= 3 * bytes.size());

    const std::string latin1 = propertyText::utf8FromLatin1(bytes);
    require(propertyText::validUtf8(latin1) == latin1);
    require(propertyText::latin1FromUtf8(latin1) == bytes);

    const auto written = propertyText::latin1FromUtf8(bytes);
    if (written) require(propertyText::utf8FromLatin1(*written) == bytes);
}

void readAsAtoms(std::string_view bytes, unsigned format) {
    const auto atoms = propertyText::atoms(bytes, format);
    require(atoms.size() <= bytes.size() / sizeof(std::uint32_t));
    for (const std::uint32_t atom : atoms) require(atom != 0);
}

/// The names stand on a line each.
void readAsTargets(std::string_view bytes) {
    std::vector<pasteboardTargets::NamedTarget> targets;
    for (std::size_t begin = 0; begin <= bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', begin), bytes.size());
        targets.push_back({.target = static_cast<std::uint32_t>(targets.size() + 1),
                           .name = std::string(bytes.substr(begin, end - begin))});
        begin = end + 1;
    }
    const auto offer = pasteboardTargets::understand(targets);
    std::size_t count = offer.concealedUnless.size();
    for (const auto& form : offer.forms) {
        require(!form.targets.empty());
        require(propertyText::validUtf8(form.type) == form.type);
        require(!pasteboardTargets::servedAs(form.type).empty());
        count += form.targets.size();
    }
    require(count <= targets.size());
}

}  // namespace

/// The first byte is the size of the property's units.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    readAsText(bytes);
    readAsAtoms(bytes, data[0]);
    readAsTargets(bytes);
    return 0;
}
