#include "model/PublicIdentifiers.h"

#include "model/Utf8.h"

#include <unicode/uchar.h>

#include <algorithm>

namespace nettlecap::identifiers {

namespace {

constexpr std::size_t mostPathSlashes = 6;
constexpr std::size_t longestPathComponent = 100;

bool isPathCharacter(char32_t scalar) {
    if (scalar >= 0x80) return scalar == 0x017F || scalar == 0x212A;  // lower case: s and k
    return (scalar >= 'a' && scalar <= 'z') || (scalar >= 'A' && scalar <= 'Z') ||
           (scalar >= '0' && scalar <= '9') || scalar == '.' || scalar == '_' || scalar == '-';
}

bool isLineTerminator(char32_t scalar) {
    return (scalar >= '\n' && scalar <= '\r') || scalar == 0x85 || scalar == 0x2028 || scalar == 0x2029;
}

/// What stands before the place where `$` matches first: before a line terminator that ends the
/// text, or at its end.
std::string_view withoutLineTerminator(std::string_view text) {
    if (text.ends_with("\r\n")) return text.substr(0, text.size() - 2);
    std::size_t start = text.size();
    return !text.empty() && isLineTerminator(utf8::previous(text, start)) ? text.substr(0, start) : text;
}

bool isWhiteSpace(char32_t scalar) {
    if (scalar < 0x80) return scalar == ' ' || (scalar >= '\t' && scalar <= '\r');
    return u_isUWhiteSpace(static_cast<UChar32>(scalar)) != 0;
}

}  // namespace

bool isEmail(std::string_view text) {
    const std::string_view address = withoutLineTerminator(text);
    const auto sign = address.find('@');
    if (sign == 0 || sign == std::string_view::npos) return false;
    const std::string_view domain = address.substr(sign + 1);
    const auto dot = domain.find('.', 1);
    if (dot == std::string_view::npos || dot + 1 == domain.size()) return false;
    if (domain.find('@') != std::string_view::npos) return false;
    for (std::size_t place = 0; place < address.size();)
        if (isWhiteSpace(utf8::next(address, place))) return false;
    return true;
}

bool isUUID(std::string_view text) {
    constexpr std::string_view shape = "xxxxxxxx-xxxx-Vxxx-Nxxx-xxxxxxxxxxxx";
    const std::string_view uuid = withoutLineTerminator(text);
    return std::ranges::equal(uuid, shape, [](char byte, char place) {
        switch (place) {
        case '-': return byte == '-';
        case 'V': return byte >= '1' && byte <= '5';
        case 'N': return std::string_view("89abAB").find(byte) != std::string_view::npos;
        default:
            return (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'f') ||
                   (byte >= 'A' && byte <= 'F');
        }
    });
}

bool isRepositoryPath(std::string_view text) {
    const std::string_view path = withoutLineTerminator(text);
    std::size_t slashes = 0;
    std::size_t length = 0;  // of the component
    for (std::size_t place = 0; place < path.size();) {
        const char32_t scalar = utf8::next(path, place);
        if (isPathCharacter(scalar)) {
            if (++length > longestPathComponent) return false;
        } else {
            if (scalar != '/' || length == 0 || ++slashes > mostPathSlashes) return false;
            length = 0;
        }
    }
    return slashes > 0 && length > 0;
}

}  // namespace nettlecap::identifiers
