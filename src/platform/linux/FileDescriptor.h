#pragma once

#include "platform/Values.h"

namespace nettlecap {

/// Owns an open file.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number) : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~FileDescriptor();

    /// Says whether it went well: what a full network disk refuses may show only now.
    Result<Done> close();

    int number() const { return number_; }
    explicit operator bool() const { return number_ >= 0; }

private:
    int number_ = -1;
};

/// What the system says about the call that has just failed (errno).
Failure systemFailure();
Failure systemFailure(std::errc error);

/// Whether the folder is a symbolic link that somebody else may have put there: a good one
/// belongs to the user or the administrator and leads to what belongs to the user.
bool isPlantedLink(const Path& folder);

/// For reading. A symbolic link in place of the file is not followed, and whatever is no
/// regular file is refused without waiting for it.
struct RegularFile {
    FileDescriptor descriptor;
    std::int64_t size = 0;

    static Result<RegularFile> open(const Path& path);
};

}  // namespace nettlecap
