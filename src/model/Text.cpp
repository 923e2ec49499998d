#include "model/Text.h"

#include "model/Utf8.h"

#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <cassert>
#include <limits>
#include <memory>

namespace nettlecap::text {

namespace {

constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();

bool isASCIIWhitespaceOrNewline(char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); }

icu::StringPiece piece(std::string_view text) {
    return {text.data(), static_cast<std::int32_t>(text.size())};
}

bool isComposed(std::string_view text) {
    if (utf8::isASCII(text)) return true;
    UErrorCode status = U_ZERO_ERROR;
    const bool result = icu::Normalizer2::getNFCInstance(status)->isNormalizedUTF8(piece(text), status);
    assert(U_SUCCESS(status));
    return result;
}

std::string composed(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    std::string result;
    icu::StringByteSink<std::string> sink(&result, static_cast<std::int32_t>(text.size()));
    icu::Normalizer2::getNFCInstance(status)->normalizeUTF8(0, piece(text), sink, nullptr, status);
    assert(U_SUCCESS(status));
    return result;
}

std::string withLineFeedsOnly(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (text[place] != '\r') {
            result += text[place];
        } else if (place + 1 == text.size() || text[place + 1] != '\n') {
            result += '\n';
        }
    }
    return result;
}

int clusterBreakOf(char32_t scalar) {
    return u_getIntPropertyValue(static_cast<UChar32>(scalar), UCHAR_GRAPHEME_CLUSTER_BREAK);
}

bool mayJoinWhatIsBefore(char32_t scalar) {  // but for the LF of a CR LF
    const int kind = clusterBreakOf(scalar);
    return kind != U_GCB_OTHER && kind != U_GCB_CONTROL && kind != U_GCB_CR && kind != U_GCB_LF;
}

/// Walks `count` characters from the start, or to the end. Where each byte and the next are
/// ASCII, the characters are the bytes, but for CR LF. Where no scalar can join its neighbour, they
/// are the scalars. From where that ends, ICU is asked for the rest.
class CharacterWalk {
public:
    CharacterWalk(std::string_view text, std::size_t count) : text_(text) {
        while (characters_ < count && end_ < text.size()) {
            if (utf8::isASCII(text[end_]) && nextIsASCII()) {
                end_ += text.substr(end_, 2) == "\r\n" ? 2 : 1;
                ++characters_;
            } else if (!walkOverScalar()) {
                walkWithBreakIterator(count);
                return;
            }
        }
    }

    std::size_t characters() const { return characters_; }
    std::size_t end() const { return end_; }

private:
    bool nextIsASCII() const { return end_ + 1 == text_.size() || utf8::isASCII(text_[end_ + 1]); }

    /// False: it may join the next one.
    bool walkOverScalar() {
        std::size_t end = end_;
        const char32_t scalar = utf8::next(text_, end);
        if (scalar == utf8::replacement || clusterBreakOf(scalar) == U_GCB_PREPEND) return false;
        if (end < text_.size()) {
            std::size_t behindNext = end;
            const char32_t next = utf8::next(text_, behindNext);
            if (next == utf8::replacement || mayJoinWhatIsBefore(next)) return false;
        }
        end_ = end;
        ++characters_;
        return true;
    }

    void walkWithBreakIterator(std::size_t count) {
        const std::string_view rest = text_.substr(end_);
        UErrorCode status = U_ZERO_ERROR;
        UText input = UTEXT_INITIALIZER;
        utext_openUTF8(&input, rest.data(), static_cast<std::int64_t>(rest.size()), &status);
        static thread_local const std::unique_ptr<icu::BreakIterator> characters(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
        characters->setText(&input, status);
        assert(U_SUCCESS(status));
        std::int32_t place = 0;
        while (characters_ < count) {
            const std::int32_t next = characters->next();
            if (next == icu::BreakIterator::DONE) break;
            place = next;
            ++characters_;
        }
        end_ += static_cast<std::size_t>(place);
        utext_close(&input);
    }

    std::string_view text_;
    std::size_t characters_ = 0;
    std::size_t end_ = 0;
};

std::string foldedWithICU(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    std::string result;
    icu::StringByteSink<std::string> sink(&result, static_cast<std::int32_t>(text.size()));
    icu::CaseMap::utf8Fold(U_FOLD_CASE_DEFAULT, piece(text), sink, nullptr, status);
    assert(U_SUCCESS(status));
    return result;
}

}  // namespace

bool isWhitespaceOrNewline(char32_t scalar) {
    if (scalar < 0x80) return isASCIIWhitespaceOrNewline(static_cast<char>(scalar));
    return scalar == 0x85 || scalar == 0x2028 || scalar == 0x2029 || scalar == 0x200B ||
           u_charType(static_cast<UChar32>(scalar)) == U_SPACE_SEPARATOR;
}

std::string_view trimmed(std::string_view text) {
    std::size_t start = 0;
    for (std::size_t next = 0; next < text.size(); start = next)
        if (!isWhitespaceOrNewline(utf8::next(text, next))) break;
    std::size_t end = text.size();
    for (std::size_t previous = end; previous > start; end = previous)
        if (!isWhitespaceOrNewline(utf8::previous(text, previous))) break;
    return text.substr(start, end - start);
}

std::string normalized(std::string_view text) {
    // Neither line ends nor composition make or take away whitespace at the ends, so it can go first.
    const std::string_view core = trimmed(text);
    if (core.find('\r') == std::string_view::npos)
        return isComposed(core) ? std::string(core) : composed(core);
    std::string lines = withLineFeedsOnly(core);
    return isComposed(lines) ? lines : composed(lines);
}

std::string onOneLine(std::string_view text) {
    std::string result(trimmed(text));
    std::ranges::replace(result, '\n', ' ');
    return result;
}

std::size_t characterCount(std::string_view text) { return characterCount(text, unlimited); }

std::size_t characterCount(std::string_view text, std::size_t limit) {
    return CharacterWalk(text, limit).characters();
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
    return text.substr(0, CharacterWalk(text, count).end());
}

std::string limited(std::string_view text, std::size_t limit) {
    const std::string_view head = firstCharacters(text, limit);
    if (head.size() == text.size()) return std::string(text);
    return std::string(trimmed(head)) + "...";
}

std::string lowercased(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    std::string result;
    icu::StringByteSink<std::string> sink(&result, static_cast<std::int32_t>(text.size()));
    icu::CaseMap::utf8ToLower("", 0, piece(text), sink, nullptr, status);
    assert(U_SUCCESS(status));
    return result;
}

std::string folded(std::string_view text) {
    if (utf8::isASCII(text)) {
        std::string result(text);
        for (char& byte : result)
            if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
        return result;
    }
    std::string result = isComposed(text) ? foldedWithICU(text) : foldedWithICU(composed(text));
    // Folding takes some letters apart again.
    return isComposed(result) ? result : composed(result);
}

}  // namespace nettlecap::text
