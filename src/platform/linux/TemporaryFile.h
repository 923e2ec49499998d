#pragma once

#include "platform/linux/FileDescriptor.h"

#include <span>

namespace nettlecap {

/// A hidden file that takes the place of another one in a single step, or is removed.
class TemporaryFile {
public:
    static bool isNameOfOne(std::string_view name);

    /// Empty, and nobody else's to read (0600).
    static Result<TemporaryFile> create(const Path& folder);
    /// A second name of `file`: no contents are read or written.
    static Result<TemporaryFile> link(const Path& file, const Path& folder);

    TemporaryFile(TemporaryFile&& other) noexcept;
    TemporaryFile& operator=(TemporaryFile&&) = delete;
    ~TemporaryFile();

    Result<Done> write(std::span<const std::string_view> pieces);
    Result<Done> flush();  ///< to the disk, and closes it
    /// The name is flushed to the disk too.
    Result<Done> replace(const Path& path);

    const Path& path() const { return path_; }

private:
    TemporaryFile(Path path, FileDescriptor file) : path_(std::move(path)), file_(std::move(file)) {}

    Path path_;  ///< empty: moved away
    FileDescriptor file_;
};

/// Makes what was created, renamed or removed in the folder safe from a power cut.
Result<Done> flushFolder(const Path& folder);

}  // namespace nettlecap
