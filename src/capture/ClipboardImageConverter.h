#pragma once

#include "platform/Images.h"

namespace nettlecap {

struct ClipboardImageConverter {
    /// The first 8 bytes of every PNG file (RFC 2083, 3.1).
    static constexpr std::string_view pngSignature = "\x89PNG\r\n\x1a\n";

    /// On any thread. What begins like a PNG is passed on as it is, undecoded.
    static std::optional<Bytes> pngData(const Bytes& data, const ImageCodec& codec);
};

}  // namespace nettlecap
