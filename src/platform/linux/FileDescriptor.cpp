#include "platform/linux/FileDescriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace nettlecap {

FileDescriptor::~FileDescriptor() {
    if (number_ >= 0) ::close(number_);
}

Result<Done> FileDescriptor::close() {
    // Linux has closed the number even where it was interrupted: closing again would hit
    // somebody else's file.
    if (::close(std::exchange(number_, -1)) != 0 && errno != EINTR) return systemFailure();
    return Done();
}

Failure systemFailure() { return {std::generic_category().message(errno)}; }

Failure systemFailure(std::errc error) { return {std::make_error_code(error).message()}; }

bool isPlantedLink(const Path& folder) {
    struct stat link {};
    if (::lstat(folder.c_str(), &link) != 0 || !S_ISLNK(link.st_mode)) return false;
    struct stat target {};
    const bool isThere = ::stat(folder.c_str(), &target) == 0;
    const uid_t user = ::geteuid();
    constexpr uid_t administrator = 0;  // may lead the user's data to another disk
    return (link.st_uid != user && link.st_uid != administrator) || (isThere && target.st_uid != user);
}

Result<RegularFile> RegularFile::open(const Path& path) {
    // O_NONBLOCK: a FIFO would wait for its writer.
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    struct stat status {};
    if (!file || ::fstat(file.number(), &status) != 0) return systemFailure();
    if (S_ISDIR(status.st_mode)) return systemFailure(std::errc::is_a_directory);
    if (!S_ISREG(status.st_mode)) return systemFailure(std::errc::not_supported);
    return RegularFile{.descriptor = std::move(file), .size = status.st_size};
}

}  // namespace nettlecap
