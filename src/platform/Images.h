#pragma once

#include "platform/Values.h"

namespace nettlecap {

/// Every function may be called from any thread. Pictures that would decode to an absurd
/// size count as ones that don't decode.
class ImageCodec {
public:
    virtual ~ImageCodec() = default;

    virtual bool isImage(const Bytes& data) const = 0;               ///< looks at the header only
    virtual bool isImage(const Path& file) const = 0;                ///< looks at the header only
    virtual std::optional<Bytes> png(const Bytes& data) const = 0;   ///< the first image, re-encoded
    virtual std::optional<Bytes> tiff(const Bytes& data) const = 0;  ///< the first image, re-encoded
};

class TextMeasure {
public:
    virtual ~TextMeasure() = default;

    /// In points, on one line, in the system's font at its system size.
    virtual double width(std::string_view text) const = 0;
};

}  // namespace nettlecap
