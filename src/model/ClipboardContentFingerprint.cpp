#include "model/ClipboardContentFingerprint.h"

#include <nettle/sha2.h>

#include <array>

namespace nettlecap {

namespace {

constexpr std::size_t digestSize = SHA256_DIGEST_SIZE;

using Digest = std::array<std::uint8_t, digestSize>;

Digest sha256(std::string_view content) {
    sha256_ctx context;
    sha256_init(&context);
    sha256_update(&context, content.size(), reinterpret_cast<const std::uint8_t*>(content.data()));
    Digest digest{};
    sha256_digest(&context, digest.size(), digest.data());
    return digest;
}

}  // namespace

std::string ClipboardContentFingerprint::fingerprint(std::string_view content, ClipboardContentKind kind) {
    static constexpr std::string_view digits = "0123456789abcdef";
    std::string result(kind == ClipboardContentKind::text ? "text:" : "image:");
    result.reserve(result.size() + 2 * digestSize);
    for (const unsigned char byte : sha256(content)) {
        result += digits[byte >> 4U];
        result += digits[byte & 0xFU];
    }
    return result;
}

}  // namespace nettlecap
