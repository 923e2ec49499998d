#pragma once

#include <cstdint>

namespace nettlecap {

/// The user's settings, changed only as a whole record.
struct AppPreferences {
    bool captureImages = true;
    bool protectSensitiveContent = true;  ///< sensitive texts are masked wherever they are shown
    std::int64_t maxHistoryItems = 500;   ///< as stored; the store floors it

    bool operator==(const AppPreferences&) const = default;
};

}  // namespace nettlecap
