#include "platform/linux/PictureBytes.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <zlib.h>

namespace nettlecap::picture {

std::string bigEndian(std::size_t word) {
    std::string bytes;
    for (const unsigned shift : {24U, 16U, 8U, 0U}) bytes += static_cast<char>(word >> shift & 0xFFU);
    return bytes;
}

std::string littleEndian(std::size_t number, int byteCount) {
    std::string bytes;
    for (; byteCount > 0; --byteCount, number >>= 8U) bytes += static_cast<char>(number & 0xFFU);
    return bytes;
}

std::string repeated(std::string_view piece, std::size_t count) {
    std::string bytes;
    bytes.reserve(piece.size() * count);
    for (; count > 0; --count) bytes += piece;
    return bytes;
}

std::string deflatedZeros(std::size_t count) { return deflated('\0', count); }

std::string deflated(char byte, std::size_t count) {
    z_stream stream{};
    if (deflateInit(&stream, Z_BEST_COMPRESSION) != Z_OK) throw std::runtime_error("zlib");
    std::array<Bytef, 1 << 16> same{};
    same.fill(static_cast<Bytef>(byte));
    std::array<Bytef, 1 << 16> block{};
    std::string bytes;
    for (int state = Z_OK; state != Z_STREAM_END;) {
        if (stream.avail_in == 0) {
            stream.next_in = same.data();
            stream.avail_in = static_cast<uInt>(std::min(count, same.size()));
            count -= stream.avail_in;
        }
        stream.next_out = block.data();
        stream.avail_out = static_cast<uInt>(block.size());
        state = deflate(&stream, count == 0 ? Z_FINISH : Z_NO_FLUSH);
        bytes.append(reinterpret_cast<const char*>(block.data()), block.size() - stream.avail_out);
    }
    deflateEnd(&stream);
    return bytes;
}

std::string pngChunk(const std::string& typeAndData) {
    const auto sum = crc32_z(0, reinterpret_cast<const Bytef*>(typeAndData.data()), typeAndData.size());
    return bigEndian(typeAndData.size() - 4) + typeAndData + bigEndian(sum);
}

std::string pngOfZeros(std::size_t width, std::size_t height, const std::string& kind,
                       std::size_t packedSize) {
    return "\x89PNG\r\n\x1a\n" + pngChunk("IHDR" + bigEndian(width) + bigEndian(height) + kind) +
           pngChunk("IDAT" + deflatedZeros(packedSize)) + pngChunk("IEND");
}

std::size_t tiffPixelsAt(std::size_t fieldCount) { return 8 + 2 + 12 * fieldCount + 4; }

std::string tiff(const std::vector<TiffField>& fields, std::string_view pixels, std::size_t nextDirectory) {
    std::string bytes = "II*" + std::string(1, '\0') + littleEndian(8, 4) + littleEndian(fields.size(), 2);
    for (const auto& [tag, value] : fields)
        bytes += littleEndian(tag, 2) + littleEndian(4, 2) + littleEndian(1, 4) + littleEndian(value, 4);
    return bytes + littleEndian(nextDirectory, 4) + std::string(pixels);
}

}  // namespace nettlecap::picture
