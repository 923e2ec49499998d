#pragma once

#include "platform/Values.h"

#include <vector>

namespace nettlecap::picture {

/// A picture made to harm whoever decodes it.
struct Hostile {
    const char* name;
    Bytes (*make)();
};

/// Small files that claim, or unfold to, what no machine has room or time for.
std::vector<Hostile> hostilePngs();
std::vector<Hostile> hostileTiffs();
std::vector<Hostile> hostilePictures();  ///< of the other formats

}  // namespace nettlecap::picture
