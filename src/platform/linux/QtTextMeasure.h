#pragma once

#include "platform/Images.h"

namespace nettlecap {

/// In the font of the Qt application, which must exist, as it is at the moment.
class QtTextMeasure final : public TextMeasure {
public:
    double width(std::string_view text) const override;
};

}  // namespace nettlecap
