#include "pictures/PngRows.h"

#include <csetjmp>
#include <png.h>
#include <vector>

// libpng leaves by longjmp where a picture is damaged. Whatever it may leave that way has nothing
// to tidy up.

namespace nettlecap {

namespace {

constexpr unsigned most = 0xFF;

[[noreturn]] void leave(png_structp png, png_const_charp /*why*/) { png_longjmp(png, 1); }

void sayNothing(png_structp /*png*/, png_const_charp /*what*/) {}

void multiply(std::span<std::uint8_t> row, std::size_t channels) {
    for (std::size_t at = 0; at < row.size(); at += channels) {
        const unsigned alpha = row[at + channels - 1];
        if (alpha == most) continue;
        for (std::size_t channel = 0; channel + 1 < channels; ++channel)
            row[at + channel] = static_cast<std::uint8_t>((row[at + channel] * alpha + most / 2) / most);
    }
}

}  // namespace

struct PngRows::Decoder {
    explicit Decoder(ByteSource bytes)
        : source(std::move(bytes)),
          png(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, leave, sayNothing)),
          info(png ? png_create_info_struct(png) : nullptr) {}
    ~Decoder() { png_destroy_read_struct(&png, &info, nullptr); }
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    /// False: it was left.
    bool run(void (*step)(Decoder&)) {
        if (setjmp(png_jmpbuf(png)) != 0) return false;
        step(*this);
        return true;
    }

    static void read(png_structp png, png_bytep to, std::size_t count) {
        const auto& decoder = *static_cast<const Decoder*>(png_get_io_ptr(png));
        for (std::span<std::uint8_t> rest(to, count); !rest.empty();) {
            const std::size_t filled = decoder.source(rest);
            if (filled == 0) png_error(png, "ended");
            rest = rest.subspan(filled);
        }
    }

    static void readHeader(Decoder& decoder) {
        png_set_read_fn(decoder.png, &decoder, read);
        // All that libpng knows and a picture can be drawn without, such as texts of any length.
        png_set_keep_unknown_chunks(decoder.png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
        png_read_info(decoder.png, decoder.info);
    }

    static void choosePixels(Decoder& decoder) {
        png_set_expand(decoder.png);  // palettes, few bits, and transparency to alpha
        png_set_scale_16(decoder.png);
        png_read_update_info(decoder.png, decoder.info);
    }

    static void readRow(Decoder& decoder) { png_read_row(decoder.png, decoder.row.data(), nullptr); }

    static void readEnd(Decoder& decoder) { png_read_end(decoder.png, decoder.info); }

    ByteSource source;
    png_structp png;
    png_infop info;
    std::vector<std::uint8_t> row;
};

PngRows::PngRows(ByteSource source) : decoder_(std::make_unique<Decoder>(std::move(source))) {}

PngRows::~PngRows() = default;

std::optional<PngFormat> PngRows::start() {
    Decoder& decoder = *decoder_;
    if (!decoder.info || !decoder.run(Decoder::readHeader)) return std::nullopt;
    if (png_get_interlace_type(decoder.png, decoder.info) != PNG_INTERLACE_NONE) return std::nullopt;
    const auto colour = png_get_color_type(decoder.png, decoder.info);
    const bool hasTransparency = png_get_valid(decoder.png, decoder.info, PNG_INFO_tRNS) != 0;
    const PngFormat format{.size = {.width = png_get_image_width(decoder.png, decoder.info),
                                    .height = png_get_image_height(decoder.png, decoder.info)},
                           .bits = png_get_bit_depth(decoder.png, decoder.info),
                           .hasColourOrAlpha = colour != PNG_COLOR_TYPE_GRAY,
                           .hasTransparentColour = hasTransparency && colour != PNG_COLOR_TYPE_PALETTE};
    if (!decoder.run(Decoder::choosePixels)) return std::nullopt;
    decoder.row.resize(png_get_rowbytes(decoder.png, decoder.info));
    return format;
}

std::size_t PngRows::channels() const { return png_get_channels(decoder_->png, decoder_->info); }

bool PngRows::isOpaque() const {
    return (png_get_color_type(decoder_->png, decoder_->info) & PNG_COLOR_MASK_ALPHA) == 0;
}

std::span<const std::uint8_t> PngRows::next() {
    if (!decoder_->run(Decoder::readRow)) return {};
    if (!isOpaque()) multiply(decoder_->row, channels());
    return decoder_->row;
}

bool PngRows::finish() { return decoder_->run(Decoder::readEnd); }

}  // namespace nettlecap
