#include "capture/ClipboardImageConverter.h"

namespace nettlecap {

std::optional<Bytes> ClipboardImageConverter::pngData(const Bytes& data, const ImageCodec& codec) {
    if (data.view().starts_with(pngSignature)) return data;
    return codec.png(data);
}

}  // namespace nettlecap
