#include "platform/linux/UserFolders.h"

#include <array>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace nettlecap::userFolders {
namespace {

std::optional<Path> homeDirectory() {
    if (const char* home = std::getenv("HOME"); home && *home) return Path(home);
    std::array<char, 16384> storage{};
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::geteuid(), &entry, storage.data(), storage.size(), &found) != 0 || !found)
        return std::nullopt;
    return Path(found->pw_dir);
}

std::optional<Path> find(const char* variable, const Path& inHome) {
    // A relative path is invalid here and to be ignored.
    if (const char* folder = std::getenv(variable); folder && *folder == '/') return Path(folder);
    const auto home = homeDirectory();
    if (!home) return std::nullopt;
    return *home / inHome;
}

}  // namespace

std::optional<Path> data() { return find("XDG_DATA_HOME", ".local/share"); }

std::optional<Path> configuration() { return find("XDG_CONFIG_HOME", ".config"); }

}  // namespace nettlecap::userFolders
