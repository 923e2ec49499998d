#pragma once

#include "platform/Values.h"

#include <string>

namespace nettlecap {

struct PackagePlaces {
    Path program;                       ///< whose origin is asked for
    Path lists = "/var/lib/dpkg/info";  ///< what dpkg keeps of each package: a list of its files

    static PackagePlaces ofProcess();
};

/// Whether the package manager brought the program in that package.
bool isFromPackage(const std::string& package, const PackagePlaces& places = PackagePlaces::ofProcess());

}  // namespace nettlecap
