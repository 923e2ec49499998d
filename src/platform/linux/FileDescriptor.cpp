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
