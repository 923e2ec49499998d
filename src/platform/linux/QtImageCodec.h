#pragma once

#include "platform/Images.h"

class QImage;

namespace nettlecap {

/// PNG, TIFF, JPEG, WebP, GIF and BMP, told apart by their first bytes. A picture of more
/// than 64 Mi pixels (256 MiB decoded), or one that breaks off, counts as one that does not
/// decode. TIFFs are written uncompressed.
class QtImageCodec final : public ImageCodec {
public:
    /// Silences what Qt and libtiff would print about damaged pictures, in the whole process.
    QtImageCodec();

    bool isImage(const Bytes& data) const override;
    bool isImage(const Path& file) const override;
    std::optional<Bytes> png(const Bytes& data) const override;
    std::optional<Bytes> tiff(const Bytes& data) const override;
};

}  // namespace nettlecap
