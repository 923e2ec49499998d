#include "platform/linux/PosixFileSystem.h"

#include "platform/linux/TemporaryFile.h"
#include "platform/linux/UserFolders.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace nettlecap {
namespace {

namespace fs = std::filesystem;

constexpr mode_t othersRights = S_IRWXG | S_IRWXO;
constexpr std::int64_t largestReadable = std::int64_t{2} * 1024 * 1024 * 1024;

bool isHidden(const Path& path) { return path.filename().native().starts_with('.'); }

std::optional<struct stat> statusOf(const Path& path) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) return std::nullopt;
    return status;
}

/// As of a folder of somebody else.
Failure refusal() { return systemFailure(std::errc::permission_denied); }

/// Somebody else's folder, or a volume without modes, stays as it is: it can be used.
void takeAwayOthersRights(const Path& folder) {
    const FileDescriptor open(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct stat status {};
    if (!open || ::fstat(open.number(), &status) != 0) return;
    if ((status.st_mode & othersRights) != 0) (void)::fchmod(open.number(), S_IRWXU);
}

Result<Done> makeFolder(const Path& path) {
    if (::mkdir(path.c_str(), S_IRWXU) != 0) return systemFailure();
    // The process's mask may have taken away even the owner's rights.
    if (::chmod(path.c_str(), S_IRWXU) != 0) return systemFailure();
    (void)flushFolder(path.parent_path());  // the folder serves without it
    return Done();
}

/// From its beginning, wherever another reading has come to.
Result<Bytes> contentsOf(const RegularFile& file) try {
    if (file.size > largestReadable) return systemFailure(std::errc::file_too_large);
    std::string contents(static_cast<std::size_t>(file.size), '\0');
    std::size_t filled = 0;
    while (filled < contents.size()) {
        const ssize_t count = ::pread(file.descriptor.number(), contents.data() + filled,
                                      contents.size() - filled, static_cast<off_t>(filled));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return systemFailure();
        if (count == 0) break;  // cut short since it was opened
        filled += static_cast<std::size_t>(count);
    }
    contents.resize(filled);
    return Bytes(std::move(contents));
} catch (const std::bad_alloc&) {
    return systemFailure(std::errc::not_enough_memory);
}

/// Without keeping any of it: what costs time is the memory for a large file, not reading it again.
Result<Done> readThrough(const RegularFile& file) {
    if (file.size > largestReadable) return systemFailure(std::errc::file_too_large);
    std::array<char, 65536> piece;
    for (off_t position = 0;;) {
        const ssize_t count = ::pread(file.descriptor.number(), piece.data(), piece.size(), position);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return systemFailure();
        if (count == 0) return Done();
        position += count;
    }
}

}  // namespace

Result<Done> PosixFileSystem::createDirectory(const Path& path) {
    if (isPlantedLink(path)) return refusal();
    std::error_code error;
    if (fs::is_directory(path, error)) {
        takeAwayOthersRights(path);
        return Done();
    }
    const Path parent = path.parent_path();
    if (parent.has_relative_path() && !fs::exists(parent, error))
        if (auto made = createDirectory(parent); !made) return made;
    return makeFolder(path);
}

Result<Done> PosixFileSystem::writeAtomically(const Path& path, std::span<const std::string_view> pieces,
                                              const Path& temporaryFolder) {
    if (isPlantedLink(path.parent_path()) || isPlantedLink(temporaryFolder)) return refusal();
    auto created = TemporaryFile::create(temporaryFolder);
    if (!created) return Failure{created.description()};
    TemporaryFile& temporary = *created;
    if (auto written = temporary.write(pieces); !written) return written;
    if (auto flushed = temporary.flush(); !flushed) return flushed;
    flushRemovals();
    return temporary.replace(path);
}

Result<Done> PosixFileSystem::keepCopy(const Path& from, const Path& to) {
    if (isPlantedLink(to.parent_path())) return refusal();
    const auto status = statusOf(from);
    if (!status) return systemFailure();
    if (S_ISDIR(status->st_mode)) return systemFailure(std::errc::is_a_directory);
    auto linked = TemporaryFile::link(from, to.parent_path());
    if (!linked) {
        // No hard links on this volume, or none to a file of this owner.
        const auto contents = read(from);
        if (!contents) return Failure{contents.description()};
        const std::array pieces = {contents->view()};
        return writeAtomically(to, pieces, to.parent_path());
    }
    TemporaryFile& link = *linked;
    if (S_ISREG(status->st_mode) && (status->st_mode & othersRights) != 0)
        (void)::chmod(link.path().c_str(), status->st_mode & S_IRWXU);
    return link.replace(to);
}

Result<Done> PosixFileSystem::remove(const Path& path) {
    if (isPlantedLink(path.parent_path())) return refusal();
    if (::unlink(path.c_str()) != 0) return systemFailure();
    removedFrom_.insert(path.parent_path());
    return Done();
}

/// Thousands of files may be removed at once, so that it is done once for all of them.
void PosixFileSystem::flushRemovals() {
    for (const Path& folder : std::exchange(removedFrom_, {}))
        (void)flushFolder(folder);  // the file is gone, if not yet for good
}

void PosixFileSystem::removeLeftovers(const Path& temporaryFolder) {
    if (isPlantedLink(temporaryFolder)) return;
    std::error_code error;
    for (fs::directory_iterator entry(temporaryFolder, error), end; !error && entry != end;
         entry.increment(error))
        if (TemporaryFile::isNameOfOne(entry->path().filename().native())) ::unlink(entry->path().c_str());
}

std::optional<Path> PosixFileSystem::applicationSupportDirectory() const { return userFolders::data(); }

Result<Bytes> PosixFileSystem::read(const Path& path) const {
    const auto file = RegularFile::open(path);
    return file ? contentsOf(*file) : Failure{file.description()};
}

Result<FileReading> PosixFileSystem::open(const Path& path) const {
    auto file = RegularFile::open(path);
    if (!file) return Failure{file.description()};
    if (auto readable = readThrough(*file); !readable) return Failure{readable.description()};
    return FileReading(
        [file = std::make_shared<const RegularFile>(std::move(*file))] { return contentsOf(*file); });
}

std::optional<std::int64_t> PosixFileSystem::size(const Path& path) const {
    const auto status = statusOf(path);
    if (!status || !S_ISREG(status->st_mode)) return std::nullopt;
    return status->st_size;
}

std::int64_t PosixFileSystem::sizeOfFilesIn(const Path& folder) const {
    std::int64_t sum = 0;
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied, error);
    for (const fs::recursive_directory_iterator end; !error && entry != end; entry.increment(error)) {
        if (isHidden(entry->path()))
            entry.disable_recursion_pending();
        else
            sum += size(entry->path()).value_or(0);
    }
    return sum;
}

}  // namespace nettlecap
