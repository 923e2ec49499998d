#include "platform/linux/TiffLayout.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <tiffio.h>

namespace nettlecap::tiff {
namespace {

struct Source {
    std::string_view bytes;
    std::uint64_t position = 0;
};

Source& sourceOf(thandle_t handle) { return *static_cast<Source*>(handle); }

tmsize_t readFrom(thandle_t handle, void* to, tmsize_t count) {
    Source& source = sourceOf(handle);
    const auto rest = source.bytes.substr(std::min<std::uint64_t>(source.position, source.bytes.size()));
    const auto taken = std::min(static_cast<std::size_t>(count), rest.size());
    std::memcpy(to, rest.data(), taken);
    source.position += taken;
    return static_cast<tmsize_t>(taken);
}

tmsize_t writeNothing(thandle_t, void*, tmsize_t) { return -1; }

toff_t moveIn(thandle_t handle, toff_t offset, int origin) {
    Source& source = sourceOf(handle);
    if (origin == SEEK_CUR) offset += source.position;
    if (origin == SEEK_END) offset += source.bytes.size();
    return source.position = offset;
}

int leaveOpen(thandle_t) { return 0; }

toff_t sizeOf(thandle_t handle) { return sourceOf(handle).bytes.size(); }

}  // namespace

std::optional<std::uint64_t> unpackedSize(std::string_view tiff) {
    Source source{.bytes = tiff};
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> file(
        // m: not mapped into memory, as it is there already
        TIFFClientOpen("", "rm", &source, readFrom, writeNothing, moveIn, leaveOpen, sizeOf, nullptr,
                       nullptr),
        TIFFClose);
    std::uint32_t height = 0;
    if (!file || TIFFGetField(file.get(), TIFFTAG_IMAGELENGTH, &height) == 0) return std::nullopt;
    const std::uint64_t line = TIFFScanlineSize64(file.get());
    if (line > UINT64_MAX / std::max(height, 1U)) return std::nullopt;
    const std::uint64_t piece =
        TIFFIsTiled(file.get()) != 0 ? TIFFTileSize64(file.get()) : TIFFStripSize64(file.get());
    if (line == 0 || piece == 0) return std::nullopt;  // it can't be told, as it is so large
    return std::max(line * height, piece);
}

}  // namespace nettlecap::tiff
