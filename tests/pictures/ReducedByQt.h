#pragma once

#include "pictures/ReducedPng.h"

#include <QImage>
#include <string_view>

/// Our decoder and Qt's, side by side.
namespace nettlecap::picture {

/// Gives at most that many bytes at a time.
ByteSource sourceOf(std::string_view bytes, std::size_t most = SIZE_MAX);
std::optional<ReducedPicture> reduced(std::string_view png, PictureSize to);

/// Decoded whole, and scaled then. Null for what Qt does not take.
QImage reducedByQt(std::string_view png, PictureSize to);

/// How far the two are apart in the channel where they differ most.
int difference(const ReducedPicture& one, const QImage& other);

}  // namespace nettlecap::picture
