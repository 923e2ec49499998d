#include "platform/linux/TemporaryFile.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nettlecap {
namespace {

constexpr std::string_view prefix = ".nettlecap-";
constexpr std::size_t gatherSize = 262'144;

/// Tries names until `take` finds one free: 0 is success, else errno says why not. No name
/// is tried twice, so that one that was given up is never removed under its next owner.
template <class Take>
Result<Path> takeFreeName(const Path& folder, Take take) {
    static std::atomic<unsigned> tried = 0;
    const std::string stem = std::string(prefix) + std::to_string(::getpid()) + '-';
    while (true) {
        Path path = folder / (stem + std::to_string(++tried));
        if (take(path) == 0) return path;
        if (errno != EEXIST) return systemFailure();
    }
}

Result<Done> writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return systemFailure();
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return Done();
}

}  // namespace

bool TemporaryFile::isNameOfOne(std::string_view name) { return name.starts_with(prefix); }

Result<TemporaryFile> TemporaryFile::create(const Path& folder) {
    FileDescriptor file;
    auto path = takeFreeName(folder, [&](const Path& name) {
        constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW;
        file = FileDescriptor(::open(name.c_str(), flags, S_IRUSR | S_IWUSR));
        return file ? 0 : -1;
    });
    if (!path) return Failure{path.description()};
    TemporaryFile made(std::move(*path), std::move(file));
    // The process's mask may have taken away even the owner's rights.
    if (::fchmod(made.file_.number(), S_IRUSR | S_IWUSR) != 0) return systemFailure();
    return made;
}

Result<TemporaryFile> TemporaryFile::link(const Path& file, const Path& folder) {
    auto path = takeFreeName(folder, [&](const Path& name) { return ::link(file.c_str(), name.c_str()); });
    if (!path) return Failure{path.description()};
    return TemporaryFile(std::move(*path), FileDescriptor());
}

TemporaryFile::TemporaryFile(TemporaryFile&& other) noexcept
    : path_(std::exchange(other.path_, Path())), file_(std::move(other.file_)) {}

// Also after the renaming: of two names of one file, rename(2) leaves both.
TemporaryFile::~TemporaryFile() {
    if (!path_.empty()) ::unlink(path_.c_str());
}

// Thousands of small pieces go out in a few calls; what is large anyway is not copied first. The
// disk begins with each part while the next is gathered; whether it succeeded, flush() tells.
Result<Done> TemporaryFile::write(std::span<const std::string_view> pieces) {
    const auto writePart = [&](std::string_view part) {
        auto done = writeAll(file_.number(), part);
        (void)::sync_file_range(file_.number(), 0, 0, SYNC_FILE_RANGE_WRITE);
        return done;
    };
    std::string gathered;
    gathered.reserve(gatherSize);
    for (const std::string_view piece : pieces) {
        if (gathered.size() + piece.size() > gatherSize) {
            if (auto done = writePart(gathered); !done) return done;
            gathered.clear();
        }
        if (piece.size() < gatherSize)
            gathered += piece;
        else if (auto done = writePart(piece); !done)
            return done;
    }
    return writeAll(file_.number(), gathered);
}

Result<Done> TemporaryFile::flush() {
    if (::fsync(file_.number()) != 0) return systemFailure();
    return file_.close();
}

Result<Done> TemporaryFile::replace(const Path& path) {
    if (::rename(path_.c_str(), path.c_str()) != 0) return systemFailure();
    return flushFolder(path.parent_path());
}

Result<Done> flushFolder(const Path& folder) {
    const Path path = folder.empty() ? Path(".") : folder;
    const FileDescriptor open(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!open) return systemFailure();
    // EINVAL: a volume that has no such thing as flushing a folder.
    if (::fsync(open.number()) != 0 && errno != EINVAL) return systemFailure();
    return Done();
}

}  // namespace nettlecap
