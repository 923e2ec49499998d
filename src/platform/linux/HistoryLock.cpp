#include "platform/linux/HistoryLock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace nettlecap {

// The file is never removed: a process that waits with the old one open would share the
// folder with one that makes it anew.
Result<std::optional<HistoryLock>> HistoryLock::take(const Path& folder) {
    if (isPlantedLink(folder)) return systemFailure(std::errc::permission_denied);
    constexpr int flags = O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    FileDescriptor file(::open((folder / ".lock").c_str(), flags, S_IRUSR | S_IWUSR));
    if (!file) return systemFailure();
    while (::flock(file.number(), LOCK_EX | LOCK_NB) != 0) {
        if (errno == EWOULDBLOCK) return std::optional<HistoryLock>();
        if (errno != EINTR) return systemFailure();
    }
    return std::optional(HistoryLock(std::move(file)));
}

}  // namespace nettlecap
