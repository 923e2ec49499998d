#include "platform/linux/QtImageCodec.h"

#include <QCoreApplication>
#include <QImageReader>
#include <cstdint>
#include <cstdlib>

// A picture in any of the formats: whatever the bytes are, its decoder ends, and what is made
// of it is a picture that decodes.

namespace {

using namespace nettlecap;

void require(bool holds) {
    if (!holds) std::abort();
}

/// Where the plugins are is known to the application alone.
struct Program {
    int count = 1;
    char name[5] = "fuzz";
    char* arguments[2] = {name, nullptr};
    QCoreApplication application{count, arguments};
    QtImageCodec codec;

    Program() { QImageReader::setAllocationLimit(4); }  // in MiB, so that a run is short
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Program program;
    const Bytes bytes(std::string(reinterpret_cast<const char*>(data), size));
    const bool isImage = program.codec.isImage(bytes);
    const auto png = program.codec.png(bytes);
    if (!png) return 0;
    require(isImage && program.codec.isImage(*png));
    require(program.codec.png(*png).has_value());
    require(program.codec.tiff(*png).has_value());
    return 0;
}
