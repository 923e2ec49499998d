#include "platform/fake/FakeImageCodec.h"

#include <array>

namespace nettlecap {
namespace {

constexpr std::string_view tiffHeader = "TIFF:";
constexpr std::string_view brokenHeader = "BROKEN:";
constexpr std::array headers = {FakeImageCodec::pngSignature, tiffHeader, std::string_view("JPEG:"),
                                brokenHeader};

std::optional<std::string_view> headerOf(std::string_view data) {
    for (const auto header : headers)
        if (data.starts_with(header)) return header;
    return std::nullopt;
}

}  // namespace

bool FakeImageCodec::isImage(const Bytes& data) const { return headerOf(data.view()).has_value(); }

bool FakeImageCodec::isImage(const Path& file) const {
    const auto data = files_.read(file);
    return data && isImage(*data);
}

std::optional<Bytes> FakeImageCodec::png(const Bytes& data) const { return reencoded(data, pngSignature); }

std::optional<Bytes> FakeImageCodec::tiff(const Bytes& data) const { return reencoded(data, tiffHeader); }

std::optional<Bytes> FakeImageCodec::reencoded(const Bytes& data, std::string_view header) const {
    ++decodings_;
    const auto had = headerOf(data.view());
    if (!had || had == brokenHeader) return std::nullopt;
    const auto payload = data.view().substr(had->size());
    if (payload.starts_with("BROKEN")) return std::nullopt;
    return Bytes(std::string(header).append(payload));
}

}  // namespace nettlecap
