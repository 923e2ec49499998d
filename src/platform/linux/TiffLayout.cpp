#include "platform/linux/TiffLayout.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
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

/// libtiff, the one that Qt's plugin loads, too. Most people never meet a TIFF, and with it come
/// seven libraries and 0.7 MiB.
struct Library {
    decltype(&TIFFClientOpen) open = nullptr;
    decltype(&TIFFClose) close = nullptr;
    decltype(&TIFFGetField) field = nullptr;
    decltype(&TIFFIsTiled) isTiled = nullptr;
    decltype(&TIFFScanlineSize64) lineSize = nullptr;
    decltype(&TIFFStripSize64) stripSize = nullptr;
    decltype(&TIFFTileSize64) tileSize = nullptr;
    decltype(&TIFFSetErrorHandler) setErrorHandler = nullptr;
    decltype(&TIFFSetWarningHandler) setWarningHandler = nullptr;
};

template <class Function>
bool find(void* file, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(file, name));
    return function != nullptr;
}

std::optional<Library> load() {
    void* const file = dlopen(NETTLECAP_LIBTIFF, RTLD_NOW | RTLD_LOCAL);
    Library it;
    if (!file || !find(file, "TIFFClientOpen", it.open) || !find(file, "TIFFClose", it.close) ||
        !find(file, "TIFFGetField", it.field) || !find(file, "TIFFIsTiled", it.isTiled) ||
        !find(file, "TIFFScanlineSize64", it.lineSize) || !find(file, "TIFFStripSize64", it.stripSize) ||
        !find(file, "TIFFTileSize64", it.tileSize) ||
        !find(file, "TIFFSetErrorHandler", it.setErrorHandler) ||
        !find(file, "TIFFSetWarningHandler", it.setWarningHandler))
        return std::nullopt;
    it.setErrorHandler(nullptr);
    it.setWarningHandler(nullptr);
    return it;
}

const Library* library() {
    static const std::optional<Library> loaded = load();
    return loaded ? &*loaded : nullptr;
}

int leaveOpen(thandle_t) { return 0; }

toff_t sizeOf(thandle_t handle) { return sourceOf(handle).bytes.size(); }

}  // namespace

void silence() { library(); }

std::optional<std::uint64_t> unpackedSize(std::string_view tiff) {
    const Library* const lib = library();
    if (!lib) return std::nullopt;
    Source source{.bytes = tiff};
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> file(
        // m: not mapped into memory, as it is there already
        lib->open("", "rm", &source, readFrom, writeNothing, moveIn, leaveOpen, sizeOf, nullptr, nullptr),
        lib->close);
    std::uint32_t height = 0;
    if (!file || lib->field(file.get(), TIFFTAG_IMAGELENGTH, &height) == 0) return std::nullopt;
    const std::uint64_t line = lib->lineSize(file.get());
    if (line > UINT64_MAX / std::max(height, 1U)) return std::nullopt;
    const std::uint64_t piece =
        lib->isTiled(file.get()) != 0 ? lib->tileSize(file.get()) : lib->stripSize(file.get());
    if (line == 0 || piece == 0) return std::nullopt;  // it can't be told, as it is so large
    return std::max(line * height, piece);
}

}  // namespace nettlecap::tiff
