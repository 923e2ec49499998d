#include "pictures/PngMaker.h"

#include "platform/linux/PictureBytes.h"

#include <QByteArray>
#include <cstdlib>
#include <random>

namespace nettlecap::picture {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t qtLength = 4;  // before what Qt compresses

std::size_t samplesOf(int colourType) {
    switch (colourType) {
    case 2: return 3;
    case 4: return 2;
    case 6: return 4;
    default: return 1;
    }
}

int paeth(int left, int above, int aboveLeft) {
    const int estimate = left + above - aboveLeft;
    const int toLeft = std::abs(estimate - left);
    const int toAbove = std::abs(estimate - above);
    const int toAboveLeft = std::abs(estimate - aboveLeft);
    if (toLeft <= toAbove && toLeft <= toAboveLeft) return left;
    return toAbove <= toAboveLeft ? above : aboveLeft;
}

int predicted(int filter, int left, int above, int aboveLeft) {
    switch (filter) {
    case 1: return left;
    case 2: return above;
    case 3: return (left + above) / 2;
    case 4: return paeth(left, above, aboveLeft);
    default: return 0;
    }
}

}  // namespace

Bytes filtered(int filter, const Bytes& row, const Bytes& above, std::size_t pixelBytes) {
    Bytes result = {static_cast<std::uint8_t>(filter)};
    for (std::size_t at = 0; at < row.size(); ++at) {
        const bool isFirst = at < pixelBytes;
        const int prediction = predicted(filter, isFirst ? 0 : row[at - pixelBytes], above[at],
                                         isFirst ? 0 : above[at - pixelBytes]);
        result.push_back(static_cast<std::uint8_t>(row[at] - prediction));
    }
    return result;
}

std::size_t PngMaker::pixelBytes() const {
    return std::max<std::size_t>(1, samplesOf(colourType) * static_cast<std::size_t>(bits) / 8);
}

std::size_t PngMaker::rowBytes() const {
    const auto rowBits = samplesOf(colourType) * static_cast<std::size_t>(bits * width);
    return (rowBits + 7) / 8;
}

Bytes PngMaker::rows() const {
    if (!contents.empty()) return contents;
    std::mt19937 random(1);
    Bytes result(rowBytes() * static_cast<std::size_t>(height));
    for (std::size_t at = 0; at < result.size(); ++at) {
        const std::size_t wave = at % rowBytes() + 3 * (at / rowBytes());
        result[at] = static_cast<std::uint8_t>(isSmooth ? wave + random() % 8 : random());
    }
    return result;
}

std::string PngMaker::header() const {
    const std::string rest = {static_cast<char>(bits), static_cast<char>(colourType), 0, 0, 0};
    return "\x89PNG\r\n\x1a\n" + pngChunk("IHDR" + bigEndian(static_cast<std::size_t>(width)) +
                                          bigEndian(static_cast<std::size_t>(height)) + rest);
}

std::string PngMaker::packed() const {
    const Bytes all = rows();
    Bytes above(rowBytes());
    QByteArray inFile;
    for (int y = 0; y < height; ++y) {
        const auto start = all.begin() + static_cast<std::ptrdiff_t>(rowBytes()) * y;
        const Bytes row(start, start + static_cast<std::ptrdiff_t>(rowBytes()));
        for (const std::uint8_t byte : filtered(filter < 0 ? y % 5 : filter, row, above, pixelBytes()))
            inFile += static_cast<char>(byte);
        above = row;
    }
    return qCompress(inFile).mid(qtLength).toStdString();
}

std::string PngMaker::pixels() const {
    const std::string all = packed();
    std::string result;
    for (std::size_t at = 0; at < all.size(); at += pieceSize)
        result += (at > 0 ? between : "") + pngChunk("IDAT" + all.substr(at, pieceSize));
    return result;
}

std::string PngMaker::bytes() const {
    return header() + (palette.empty() ? "" : pngChunk("PLTE" + palette)) +
           (transparency.empty() ? "" : pngChunk("tRNS" + transparency)) + before + pixels() +
           pngChunk("IEND");
}

}  // namespace nettlecap::picture
