#pragma once

#include <map>
#include <string>
#include <string_view>

namespace nettlecap {

/// The booleans of an XML property list's outermost dictionary. Takes any bytes at all;
/// what is no property list from beginning to end has none.
std::map<std::string, bool> flagsOfPropertyList(std::string_view file);

}  // namespace nettlecap
