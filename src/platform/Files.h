#pragma once

#include "platform/Values.h"

#include <functional>
#include <span>

namespace nettlecap {

/// Reads a whole file, on whatever thread and as often as wanted.
using FileReading = std::function<Result<Bytes>()>;

/// The files of the user's own folders. Nothing follows a symbolic link that stands in
/// place of a file, and whatever is no regular file can't be read.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    /// With its parents; ours alone to enter (0700). An existing folder is no error.
    virtual Result<Done> createDirectory(const Path& path) = 0;
    /// The pieces, one after the other. At every instant, a power cut included, the file is
    /// the old one or the whole new one; nobody else may read it (0600). The temporary file
    /// is hidden and stands in `temporaryFolder`, which is on the same volume.
    virtual Result<Done> writeAtomically(const Path& path, std::span<const std::string_view> pieces,
                                         const Path& temporaryFolder) = 0;
    /// Keeps the file under a second name too, replacing what had it, also when the file
    /// can't be read or the disk is full. A later atomic write to `from` leaves `to` alone.
    virtual Result<Done> keepCopy(const Path& from, const Path& to) = 0;
    /// Until the next atomic write has returned, a power cut may bring the file back.
    virtual Result<Done> remove(const Path& path) = 0;
    /// Removes what atomic writes left in their temporary folder when the process was killed.
    virtual void removeLeftovers(const Path& temporaryFolder) = 0;

    /// Where applications keep the user's data. Absent: the system has no such place.
    virtual std::optional<Path> applicationSupportDirectory() const = 0;
    virtual Result<Bytes> read(const Path& path) const = 0;
    /// To read it later as it is now, removed or written anew meanwhile. Fails now if it can't be read.
    virtual Result<FileReading> open(const Path& path) const = 0;
    virtual std::optional<std::int64_t> size(const Path& path) const = 0;  ///< in bytes, of a regular file
    /// In bytes, with sub-folders, hidden files left out; 0 where the folder can't be listed.
    virtual std::int64_t sizeOfFilesIn(const Path& folder) const = 0;
};

}  // namespace nettlecap
