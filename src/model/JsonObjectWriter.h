#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nettlecap {

/// Writes one flat JSON object, field by field, compact. Absent values are left out. What
/// is not UTF-8 becomes U+FFFD, so that whatever was written can be read again.
class JsonObjectWriter {
public:
    explicit JsonObjectWriter(std::size_t expectedSize) { text_.reserve(expectedSize); }

    void string(std::string_view key, std::string_view value);
    void optionalString(std::string_view key, const std::optional<std::string>& value);
    void boolean(std::string_view key, bool value);
    void number(std::string_view key, double value);  ///< finite; the shortest that reads back the same

    std::string finished() &&;

private:
    void startField(std::string_view key);
    void appendEscaped(std::string_view value);
    void appendEscape(char byte);

    std::string text_;
};

}  // namespace nettlecap
