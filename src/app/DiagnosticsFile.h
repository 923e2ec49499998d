#pragma once

#include "platform/Files.h"
#include "platform/Time.h"

#include <vector>

namespace nettlecap {

/// A small text in the program's folder that shows what the system answered, for whoever
/// looks into a machine where something does not work. Nobody is told when it can't be
/// written: the program does not depend on it.
struct DiagnosticsFile {
    struct Ports {
        FileSystem& files;
        const Clock& clock;
    };
    struct Line {
        std::string_view key;
        std::string value;
    };

    /// Replaces the whole file: the time, then the lines, as "key=value".
    static void write(Ports ports, std::string_view name, const std::vector<Line>& lines);
};

}  // namespace nettlecap
