#pragma once

#include "platform/Values.h"

#include <vector>

/// Programs of the desktop that go on without us.
namespace nettlecap::detachedProgram {

/// As a shell finds it: a path as it stands, a name in PATH. Absent: nobody could run it.
std::optional<Path> find(const std::string& name);

/// Nobody waits for it, and it has the permissions mask and the settings of Qt that this process
/// started with.
/// False: it can't be started.
bool start(const Path& program, const std::vector<std::string>& arguments);

}  // namespace nettlecap::detachedProgram
