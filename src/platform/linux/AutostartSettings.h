#pragma once

#include "platform/Values.h"

#include <vector>

namespace nettlecap {

/// A program and what it is given, as a shell would be told.
struct CommandLine {
    std::string program;
    std::vector<std::string> arguments;

    bool operator==(const CommandLine&) const = default;
};

/// Where desktops let the user choose what starts with the session, the best first: those
/// of the desktop in use (the value of XDG_CURRENT_DESKTOP), of whom not all are installed.
std::vector<CommandLine> autostartSettings(std::string_view currentDesktop);

/// Opens the first of them that can be started, else the folder in the file manager.
void openAutostartSettings(const Path& folder);

}  // namespace nettlecap
