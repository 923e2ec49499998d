#include "platform/linux/PackageOrigin.h"

#include <fstream>

namespace nettlecap {

PackagePlaces PackagePlaces::ofProcess() {
    std::error_code error;  // a program without a path is in no list
    return {.program = std::filesystem::read_symlink("/proc/self/exe", error)};
}

bool isFromPackage(const std::string& package, const PackagePlaces& places) {
    std::ifstream list(places.lists / (package + ".list"));
    for (std::string line; std::getline(list, line);)
        if (line == places.program) return true;
    return false;
}

}  // namespace nettlecap
