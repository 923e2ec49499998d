#pragma once

#include <QString>
#include <string_view>

namespace nettlecap {

/// The model's UTF-8 as Qt has it.
inline QString qtText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace nettlecap
