#pragma once

#include "capture/PasteboardTypes.h"

#include <array>

namespace nettlecap {

/// Decides what a copy is that holds both a text and a picture: office programs lay a
/// picture of the text beside it, others a picture's name or address beside the picture.
struct ClipboardPayloadResolver {
    /// What makes a copy a picture. "com.microsoft.bmp" is none of them.
    static constexpr std::array<std::string_view, 7> rasterImageTypes = {
        "public.png",  "public.tiff", "public.jpeg",       "public.heic",
        "public.heif", "public.webp", "com.compuserve.gif"};

    static bool shouldCaptureTextFirst(const std::optional<std::string>& text,
                                       const std::optional<std::string>& sourceApplication,
                                       const PasteboardTypes& pasteboardTypes);
};

}  // namespace nettlecap
