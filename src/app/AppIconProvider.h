#pragma once

#include "platform/StatusItem.h"

namespace nettlecap {

/// The program's own pictures.
struct AppIconProvider {
    /// As the system installed it, and the symbol to take where it did not.
    struct Image {
        std::string_view name;
        std::string_view fallbackSymbol;
    };

    static constexpr Image image{.name = "Nettlecap", .fallbackSymbol = "clipboard.fill"};
    static const TemplateDrawing& menuBarImage();  ///< a clipboard with two arrows that pass each other
};

}  // namespace nettlecap
