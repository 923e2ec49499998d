#include "model/ClipboardContentFingerprint.h"

#include <openssl/evp.h>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace nettlecap {

namespace {

constexpr std::size_t digestSize = 32;

using Digest = std::array<unsigned char, digestSize>;

[[noreturn]] void abortWithoutSHA256() {
    std::fputs("nettlecap: SHA-256 is not available\n", stderr);
    std::abort();
}

Digest sha256(std::string_view content) {
    // Looking an algorithm up costs several times what hashing a short text does.
    static const EVP_MD* const algorithm = EVP_MD_fetch(nullptr, "SHA256", nullptr);
    Digest digest{};
    if (!algorithm ||
        EVP_Digest(content.data(), content.size(), digest.data(), nullptr, algorithm, nullptr) != 1)
        abortWithoutSHA256();
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
