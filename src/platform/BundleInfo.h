#pragma once

#include "platform/Values.h"

namespace nettlecap {

/// What the installed program says of itself, in its Info.plist.
class BundleInfo {
public:
    virtual ~BundleInfo() = default;

    virtual Path path() const = 0;  ///< of the bundle; of the program where there is none
    /// Absent: the key is missing, its value is no boolean, or nothing can be read.
    virtual std::optional<bool> flag(std::string_view key) const = 0;
};

}  // namespace nettlecap
