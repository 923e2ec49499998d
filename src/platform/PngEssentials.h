#pragma once

#include <string>
#include <string_view>

namespace nettlecap {

/// A PNG (ISO/IEC 15948) reduced to what its pixels depend on. libpng unpacks each text of a
/// picture, up to 8 MB, and keeps a thousand of them, of which Qt makes four times as much: a
/// file of 8 MB could take all of the memory. What is no PNG becomes empty; what breaks off
/// stays broken off.
std::string pngEssentials(std::string_view png);

}  // namespace nettlecap
