#pragma once

#include "platform/Images.h"

#include <algorithm>

namespace nettlecap {

/// Every Unicode scalar is equally wide.
class FakeTextMeasure final : public TextMeasure {
public:
    void setCharacterWidth(double width) { characterWidth_ = width; }

    double width(std::string_view text) const override {
        const auto starts = std::ranges::count_if(
            text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; });
        return characterWidth_ * static_cast<double>(starts);
    }

private:
    double characterWidth_ = 10;
};

}  // namespace nettlecap
