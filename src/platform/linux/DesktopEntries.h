#pragma once

#include "platform/Values.h"
#include "platform/linux/DesktopEntry.h"

#include <array>
#include <map>
#include <set>
#include <unordered_map>
#include <vector>

namespace nettlecap {

/// What a window says of its kind: the two halves of WM_CLASS, or both the same application id.
struct WindowClass {
    std::string instance;
    std::string name;

    bool operator==(const WindowClass&) const = default;
};

/// The installed applications. Read at the first question, and again when a folder changed
/// or a class turns up that no entry names; then only changed files are opened.
class DesktopEntries {
public:
    /// Folders whose `applications` sub-folder holds entries. Of two entries with one
    /// identifier the first folder's counts, even where it only hides the other.
    DesktopEntries(std::vector<Path> dataFolders, MessageLocale locale);

    static std::vector<Path> dataFoldersOfEnvironment();  ///< XDG_DATA_HOME, then XDG_DATA_DIRS

    /// By StartupWMClass, else the identifier or its last part, else the program that the
    /// entry runs; among equals one that menus show. The instance goes before the class, being more
    /// particular.
    std::optional<DesktopEntry> find(const WindowClass& window);

private:
    /// Equal as long as nobody wrote to the file or folder.
    struct Stamp {
        std::uint32_t mode = 0;
        std::uint64_t device = 0;
        std::uint64_t file = 0;
        std::int64_t size = 0;
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;

        bool operator==(const Stamp&) const = default;
    };
    struct File {
        Stamp stamp;
        std::optional<DesktopEntry> entry;
    };
    struct Walk;
    using Index = std::unordered_map<std::string, std::size_t>;

    static std::optional<Stamp> stampOf(const Path& path);
    bool hasFolderChanged() const;
    void scan();
    void walk(Walk& walk, const Path& folder, const std::string& identifierPrefix, int depth) const;
    File readFile(const Path& path, const Stamp& stamp) const;
    void rebuildIndexes(std::vector<DesktopEntry> entries);
    std::optional<DesktopEntry> lookUp(const WindowClass& window) const;

    std::vector<Path> roots_;
    MessageLocale locale_;
    std::map<Path, std::optional<Stamp>> folders_;  // every folder that was looked into
    std::map<Path, File> files_;
    std::vector<DesktopEntry> entries_;
    std::set<std::string> unknown_;
    std::array<Index, 5> indexes_;  // in the order in which they are asked
};

}  // namespace nettlecap
