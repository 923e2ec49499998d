#pragma once

#include "platform/Files.h"

#include <set>

namespace nettlecap {

/// Nothing is written or removed in a folder whose place a symbolic link of another user has
/// taken, or one that leads to another user's folder. Temporary files are named ".nettlecap-"
/// and a number; whoever calls removeLeftovers must be the only process that writes in the folder.
class PosixFileSystem final : public FileSystem {
public:
    /// Flushes the folders that got a new one, too. Of a folder that exists already, the
    /// rights of others are taken away.
    Result<Done> createDirectory(const Path& path) override;
    Result<Done> writeAtomically(const Path& path, std::span<const std::string_view> pieces,
                                 const Path& temporaryFolder) override;
    /// A hard link; a copy where the volume has none.
    Result<Done> keepCopy(const Path& from, const Path& to) override;
    Result<Done> remove(const Path& path) override;
    void removeLeftovers(const Path& temporaryFolder) override;

    /// $XDG_DATA_HOME, else .local/share in the home folder (XDG Base Directory Specification).
    std::optional<Path> applicationSupportDirectory() const override;
    Result<Bytes> read(const Path& path) const override;  ///< up to 2 GiB
    Result<FileReading> open(const Path& path) const override;
    std::optional<std::int64_t> size(const Path& path) const override;
    std::int64_t sizeOfFilesIn(const Path& folder) const override;

private:
    void flushRemovals();

    std::set<Path> removedFrom_;  ///< folders whose removals are not on the disk yet
};

}  // namespace nettlecap
