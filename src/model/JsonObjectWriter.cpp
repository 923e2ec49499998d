#include "model/JsonObjectWriter.h"

#include "model/Utf8.h"

#include <array>
#include <cassert>
#include <charconv>
#include <cmath>

namespace nettlecap {

namespace {

constexpr double firstLongInteger = 1e15;

bool mustBeEscaped(char byte) {
    return static_cast<unsigned char>(byte) < 0x20 || byte == '"' || byte == '\\';
}

}  // namespace

void JsonObjectWriter::string(std::string_view key, std::string_view value) {
    startField(key);
    text_ += '"';
    if (utf8::isWellFormed(value)) {
        appendEscaped(value);
    } else {
        appendEscaped(utf8::wellFormed(value));
    }
    text_ += '"';
}

void JsonObjectWriter::optionalString(std::string_view key, const std::optional<std::string>& value) {
    if (value) string(key, *value);
}

void JsonObjectWriter::boolean(std::string_view key, bool value) {
    startField(key);
    text_ += value ? "true" : "false";
}

void JsonObjectWriter::number(std::string_view key, double value) {
    assert(std::isfinite(value));
    startField(key);
    // A reader would take twenty digits without an exponent for an integer, and out of range.
    const bool isLong = std::abs(value) >= firstLongInteger;
    std::array<char, 32> digits{};
    char* const begin = digits.data();
    char* const limit = begin + digits.size();
    const auto end = isLong ? std::to_chars(begin, limit, value, std::chars_format::scientific)
                            : std::to_chars(begin, limit, value);
    text_.append(begin, end.ptr);
}

std::string JsonObjectWriter::finished() && {
    text_ += text_.empty() ? "{}" : "}";
    return std::move(text_);
}

void JsonObjectWriter::startField(std::string_view key) {
    text_ += text_.empty() ? "{\"" : ",\"";
    text_ += key;
    text_ += "\":";
}

void JsonObjectWriter::appendEscaped(std::string_view value) {
    std::size_t copied = 0;
    for (std::size_t place = 0; place < value.size(); ++place) {
        if (!mustBeEscaped(value[place])) continue;
        text_.append(value, copied, place - copied);
        appendEscape(value[place]);
        copied = place + 1;
    }
    text_.append(value, copied);
}

void JsonObjectWriter::appendEscape(char byte) {
    static constexpr std::string_view hexDigits = "0123456789abcdef";
    switch (byte) {
    case '"': text_ += "\\\""; break;
    case '\\': text_ += "\\\\"; break;
    case '\b': text_ += "\\b"; break;
    case '\f': text_ += "\\f"; break;
    case '\n': text_ += "\\n"; break;
    case '\r': text_ += "\\r"; break;
    case '\t': text_ += "\\t"; break;
    default:
        text_ += "\\u00";
        text_ += hexDigits[static_cast<unsigned char>(byte) >> 4U];
        text_ += hexDigits[static_cast<unsigned char>(byte) & 0xFU];
    }
}

}  // namespace nettlecap
