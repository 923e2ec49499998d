#include "platform/linux/PictureSource.h"

#include <algorithm>
#include <cstring>

namespace nettlecap {

// Unbuffered: a buffer would read ahead, past what the decoder asked for.
PictureSource::PictureSource(std::string_view bytes, std::chrono::milliseconds time)
    : bytes_(bytes), deadline_(time) {
    open(ReadOnly | Unbuffered);
}

void PictureSource::forgetShortReads() {
    gaveLess_ = false;
    gaveNothing_ = false;
}

bool PictureSource::seek(qint64 position) {
    position_ = static_cast<std::size_t>(position);
    return QIODevice::seek(position);
}

qint64 PictureSource::readData(char* to, qint64 count) {
    const auto end = deadline_.hasExpired() ? 0 : bytes_.size();
    const auto rest = bytes_.substr(std::min(position_, bytes_.size()), end);
    const auto taken = std::min(static_cast<std::size_t>(count), rest.size());
    std::memcpy(to, rest.data(), taken);
    position_ += taken;
    if (taken < static_cast<std::size_t>(count)) gaveLess_ = true;
    if (taken == 0 && count > 0) gaveNothing_ = true;
    return static_cast<qint64>(taken);
}

}  // namespace nettlecap
