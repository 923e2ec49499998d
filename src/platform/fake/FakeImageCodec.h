#pragma once

#include "platform/Files.h"
#include "platform/Images.h"

namespace nettlecap {

/// Made-up pictures, each a header and a payload. The headers are the PNG signature,
/// "TIFF:" and "JPEG:"; a payload that begins with "BROKEN" does not decode, nor does any
/// that follows the header "BROKEN:".
class FakeImageCodec final : public ImageCodec {
public:
    static constexpr std::string_view pngSignature = "\x89PNG\r\n\x1a\n";

    explicit FakeImageCodec(const FileSystem& files) : files_(files) {}

    bool isImage(const Bytes& data) const override;
    bool isImage(const Path& file) const override;
    std::optional<Bytes> png(const Bytes& data) const override;
    std::optional<Bytes> tiff(const Bytes& data) const override;

    int decodings() const { return decodings_; }  ///< how often somebody paid for one

private:
    std::optional<Bytes> reencoded(const Bytes& data, std::string_view header) const;

    const FileSystem& files_;
    mutable int decodings_ = 0;
};

}  // namespace nettlecap
