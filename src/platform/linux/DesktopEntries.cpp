#include "platform/linux/DesktopEntries.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <system_error>

namespace nettlecap {
namespace {

constexpr off_t largestFile = off_t{256} * 1024;  // the most translated ones have about 60 KiB
constexpr std::size_t mostFiles = 20'000;
constexpr int deepestFolder = 8;
constexpr std::size_t mostUnknown = 1000;  // programs can change their class at will
constexpr std::string_view ending = ".desktop";

// The indexes, in the order in which they are asked.
enum Criterion : std::size_t { exactClass, foldedClass, identifier, lastOfIdentifier, program };

/// Window classes and identifiers are ASCII; the rest compares as it stands.
std::string folded(std::string text) {
    for (char& character : text)
        if (character >= 'A' && character <= 'Z') character = static_cast<char>(character - 'A' + 'a');
    return text;
}

/// Absent where it can't be read, has become no regular file, or is too large for an entry.
std::optional<std::string> contentsOf(const Path& path) {
    // Non-blocking, so that a pipe put there meanwhile does not hold us.
    const int file = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0) return std::nullopt;
    struct stat status {};
    std::string contents;
    bool isWhole = ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_size <= largestFile;
    if (isWhole) {
        contents.resize(static_cast<std::size_t>(status.st_size) + 1);
        std::size_t length = 0;
        ssize_t got = 0;
        while (length < contents.size() &&
               (got = ::read(file, contents.data() + length, contents.size() - length)) > 0)
            length += static_cast<std::size_t>(got);
        isWhole = got == 0;  // a file that grew meanwhile is read when its time shows it
        contents.resize(length);
    }
    ::close(file);
    if (!isWhole) return std::nullopt;
    return contents;
}

std::vector<Path> sortedContentsOf(const Path& folder) {
    std::vector<Path> paths;
    std::error_code failed;
    std::filesystem::directory_iterator item(folder, failed);
    for (; !failed && item != std::filesystem::directory_iterator(); item.increment(failed))
        if (paths.size() < mostFiles) paths.push_back(item->path());
    std::ranges::sort(paths);
    return paths;
}

}  // namespace

/// What one walk through the folders has met so far.
struct DesktopEntries::Walk {
    std::map<Path, std::optional<Stamp>> folders;
    std::set<std::pair<std::uint64_t, std::uint64_t>> visited;  // device and file: links may go in circles
    std::set<std::string> identifiers;
    std::map<Path, File> files;
    std::vector<DesktopEntry> entries;
};

DesktopEntries::DesktopEntries(std::vector<Path> dataFolders, MessageLocale locale)
    : roots_(std::move(dataFolders)), locale_(std::move(locale)) {
    for (Path& folder : roots_) folder /= "applications";
}

std::vector<Path> DesktopEntries::dataFoldersOfEnvironment() {
    const auto valueOf = [](const char* variable, const std::string& otherwise) {
        const char* value = std::getenv(variable);
        return value && *value ? std::string(value) : otherwise;
    };
    const auto home = valueOf("HOME", "");
    auto rest = valueOf("XDG_DATA_HOME", home + "/.local/share") + ':' +
                valueOf("XDG_DATA_DIRS", "/usr/local/share:/usr/share") + ':';
    std::vector<Path> folders;
    for (std::size_t end = 0; (end = rest.find(':')) != std::string::npos; rest.erase(0, end + 1))
        // The Base Directory Specification has relative paths ignored.
        if (Path folder = rest.substr(0, end); folder.is_absolute()) folders.push_back(std::move(folder));
    return folders;
}

std::optional<DesktopEntry> DesktopEntries::find(const WindowClass& window) {
    const bool isStale = hasFolderChanged();
    if (isStale) scan();
    if (auto entry = lookUp(window)) return entry;
    // A file changed in its place leaves its folder's time as it was: one look more, but
    // not at every question about a program that brought no entry.
    if (isStale || !unknown_.insert(window.instance + '\0' + window.name).second) return std::nullopt;
    scan();
    return lookUp(window);
}

std::optional<DesktopEntries::Stamp> DesktopEntries::stampOf(const Path& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return std::nullopt;
    return Stamp{
        .mode = status.st_mode,
        .device = status.st_dev,
        .file = status.st_ino,
        .size = status.st_size,
        .seconds = status.st_mtim.tv_sec,
        .nanoseconds = status.st_mtim.tv_nsec,
    };
}

bool DesktopEntries::hasFolderChanged() const {
    return folders_.empty() || std::ranges::any_of(folders_, [](const auto& folder) {
               return stampOf(folder.first) != folder.second;
           });
}

void DesktopEntries::scan() {
    Walk all;
    for (const Path& root : roots_) walk(all, root, "", 0);
    folders_ = std::move(all.folders);
    files_ = std::move(all.files);
    rebuildIndexes(std::move(all.entries));
    if (unknown_.size() > mostUnknown) unknown_.clear();
}

void DesktopEntries::walk(Walk& walk, const Path& folder, const std::string& identifierPrefix,
                          int depth) const {
    const auto folderStamp = stampOf(folder);
    walk.folders.emplace(folder, folderStamp);
    if (!folderStamp || !walk.visited.emplace(folderStamp->device, folderStamp->file).second) return;

    for (const Path& path : sortedContentsOf(folder)) {
        const auto name = path.filename().string();
        const auto stamp = stampOf(path);
        if (stamp && S_ISDIR(stamp->mode)) {
            if (depth < deepestFolder) this->walk(walk, path, identifierPrefix + name + '-', depth + 1);
        } else if (name.ends_with(ending) && walk.identifiers.size() < mostFiles) {
            auto id = identifierPrefix + name.substr(0, name.size() - ending.size());
            // Whatever stands under the name hides the same entry of later folders.
            if (!walk.identifiers.insert(id).second || !stamp || !S_ISREG(stamp->mode)) continue;
            const File& file = walk.files.emplace(path, readFile(path, *stamp)).first->second;
            if (!file.entry) continue;
            walk.entries.push_back(*file.entry);
            walk.entries.back().identifier = std::move(id);
        }
    }
}

DesktopEntries::File DesktopEntries::readFile(const Path& path, const Stamp& stamp) const {
    if (const auto known = files_.find(path); known != files_.end() && known->second.stamp == stamp)
        return known->second;
    const auto contents = contentsOf(path);
    return {stamp, contents ? DesktopEntry::parse(*contents, locale_) : std::nullopt};
}

void DesktopEntries::rebuildIndexes(std::vector<DesktopEntry> entries) {
    entries_ = std::move(entries);
    // Not the one of std::ranges: Clang 14 can't compile what it returns.
    std::stable_partition(entries_.begin(), entries_.end(), std::mem_fn(&DesktopEntry::isShown));
    for (Index& index : indexes_) index.clear();

    // The first to claim a key keeps it.
    const auto claim = [this](Criterion criterion, const std::string& key, std::size_t entry) {
        if (!key.empty()) indexes_[criterion].emplace(key, entry);
    };
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        claim(exactClass, entries_[i].startupWindowClass, i);
        claim(foldedClass, folded(entries_[i].startupWindowClass), i);
        claim(identifier, folded(entries_[i].identifier), i);
        // "mousepad" is org.xfce.mousepad, not another entry that runs the same program.
        const std::string& whole = entries_[i].identifier;
        claim(lastOfIdentifier, folded(whole.substr(whole.rfind('.') + 1)), i);
        claim(program, folded(entries_[i].program), i);
    }
}

std::optional<DesktopEntry> DesktopEntries::lookUp(const WindowClass& window) const {
    for (std::size_t criterion = 0; criterion < indexes_.size(); ++criterion) {
        for (const std::string& key : {window.instance, window.name}) {
            const auto found = indexes_[criterion].find(criterion == exactClass ? key : folded(key));
            if (found != indexes_[criterion].end()) return entries_[found->second];
        }
    }
    return std::nullopt;
}

}  // namespace nettlecap
