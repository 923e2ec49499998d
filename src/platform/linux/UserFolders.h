#pragma once

#include "platform/Values.h"

/// Where programs keep what is the user's (XDG Base Directory Specification). Absent: the
/// user has no home folder.
namespace nettlecap::userFolders {

std::optional<Path> data();           ///< $XDG_DATA_HOME, else .local/share in the home folder
std::optional<Path> configuration();  ///< $XDG_CONFIG_HOME, else .config in the home folder

}  // namespace nettlecap::userFolders
