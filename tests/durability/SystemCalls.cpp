#include "durability/SystemCalls.h"

#include <cerrno>
#include <cstdarg>
#include <fcntl.h>
#include <map>
#include <sys/stat.h>
#include <unistd.h>

// The linker leads each call of the program to its __wrap_ function here, and calls it by
// its __real_ name (ld --wrap). Calls inside shared libraries are not seen.

extern "C" {
int __real_open(const char* path, int flags, ...);
ssize_t __real_write(int file, const void* bytes, size_t count);
int __real_fsync(int file);
int __real_close(int file);
int __real_rename(const char* from, const char* to);
int __real_link(const char* from, const char* to);
int __real_unlink(const char* path);
int __real_mkdir(const char* path, mode_t mode);
int __real_chmod(const char* path, mode_t mode);
int __real_fchmod(int file, mode_t mode);
}

namespace nettlecap {
namespace {

using Course = SystemCallWatcher::Course;

struct Watch {
    Path root;
    SystemCallWatcher& watcher;
    std::map<int, std::pair<Path, bool>> open;  // whether it is a folder

    bool concerns(const Path& path) const { return path.native().starts_with(root.native()); }
};

std::optional<Watch> watch;

/// -1, with errno, when the watcher wants it; else what `work` returns.
template <class Work>
auto carryOut(const DiskCall& call, Work work) -> decltype(work()) {
    const Course course = watch->watcher.before(call);
    if (course == Course::fails || course == Course::isOverQuota) {
        errno = course == Course::fails ? EIO : EDQUOT;
        return -1;
    }
    const auto result = work();
    if (result < 0) return result;
    watch->watcher.after(call);
    if (course != Course::succeedsAndSaysItFailed) return result;
    errno = EIO;
    return -1;
}

template <class Work>
int atPath(SystemCall call, const char* path, const char* newPath, Work work) {
    if (!watch || !watch->concerns(path)) return work();
    return carryOut({.call = call, .path = path, .newPath = newPath ? newPath : "", .bytes = {}}, work);
}

const std::pair<Path, bool>* watched(int file) {
    if (!watch) return nullptr;
    const auto found = watch->open.find(file);
    return found == watch->open.end() ? nullptr : &found->second;
}

int open(const char* path, int flags, mode_t mode) {
    if (!watch || !watch->concerns(path)) return __real_open(path, flags, mode);
    const bool isFolder = (flags & O_DIRECTORY) != 0;
    const SystemCall call = isFolder                 ? SystemCall::openFolder
                            : (flags & O_CREAT) != 0 ? SystemCall::create
                                                     : SystemCall::openFile;
    int file = -1;
    const int result = carryOut({.call = call, .path = path, .newPath = {}, .bytes = {}},
                                [&] { return file = __real_open(path, flags, mode); });
    if (result >= 0) watch->open[result] = {path, isFolder};
    if (result < 0 && file >= 0) __real_close(file);
    return result;
}

ssize_t write(int file, const void* bytes, size_t count) {
    const auto* const known = watched(file);
    if (!known) return __real_write(file, bytes, count);
    DiskCall call{.call = SystemCall::write,
                  .path = known->first,
                  .newPath = {},
                  .bytes = {static_cast<const char*>(bytes), count}};
    const Course course = watch->watcher.before(call);
    if (course == Course::fails || course == Course::isOverQuota) {
        errno = course == Course::fails ? ENOSPC : EDQUOT;
        return -1;
    }
    if (course == Course::writesHalf) call.bytes = call.bytes.substr(0, (count + 1) / 2);
    const ssize_t written = __real_write(file, bytes, call.bytes.size());
    if (written >= 0) watch->watcher.after(call);
    if (course != Course::succeedsAndSaysItFailed) return written;
    errno = EIO;
    return -1;
}

int fsync(int file) {
    const auto* const known = watched(file);
    if (!known) return __real_fsync(file);
    const SystemCall call = known->second ? SystemCall::flushFolder : SystemCall::flushFile;
    return carryOut({.call = call, .path = known->first, .newPath = {}, .bytes = {}}, [] { return 0; });
}

/// However it goes, the number is closed: so it is on Linux.
int close(int file) {
    const auto* const known = watched(file);
    if (!known) return __real_close(file);
    const Path path = known->first;
    watch->open.erase(file);
    const int closed = __real_close(file);
    return carryOut({.call = SystemCall::close, .path = path, .newPath = {}, .bytes = {}},
                    [&] { return closed; });
}

int fchmod(int file, mode_t mode) {
    const auto* const known = watched(file);
    if (!known) return __real_fchmod(file, mode);
    return carryOut({.call = SystemCall::changeMode, .path = known->first, .newPath = {}, .bytes = {}},
                    [&] { return __real_fchmod(file, mode); });
}

}  // namespace

WatchedSystemCalls::WatchedSystemCalls(Path root, SystemCallWatcher& watcher) {
    watch.emplace(Watch{.root = std::move(root), .watcher = watcher, .open = {}});
}

WatchedSystemCalls::~WatchedSystemCalls() { watch.reset(); }

}  // namespace nettlecap

extern "C" {

int __wrap_open(const char* path, int flags, ...) {
    mode_t mode = 0;
    if ((flags & O_CREAT) != 0) {
        va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    return nettlecap::open(path, flags, mode);
}

ssize_t __wrap_write(int file, const void* bytes, size_t count) {
    return nettlecap::write(file, bytes, count);
}

int __wrap_fsync(int file) { return nettlecap::fsync(file); }

int __wrap_close(int file) { return nettlecap::close(file); }

int __wrap_fchmod(int file, mode_t mode) { return nettlecap::fchmod(file, mode); }

int __wrap_rename(const char* from, const char* to) {
    return nettlecap::atPath(nettlecap::SystemCall::rename, from, to,
                             [&] { return __real_rename(from, to); });
}

int __wrap_link(const char* from, const char* to) {
    return nettlecap::atPath(nettlecap::SystemCall::link, from, to, [&] { return __real_link(from, to); });
}

int __wrap_unlink(const char* path) {
    return nettlecap::atPath(nettlecap::SystemCall::remove, path, nullptr,
                             [&] { return __real_unlink(path); });
}

int __wrap_mkdir(const char* path, mode_t mode) {
    return nettlecap::atPath(nettlecap::SystemCall::makeFolder, path, nullptr,
                             [&] { return __real_mkdir(path, mode); });
}

int __wrap_chmod(const char* path, mode_t mode) {
    return nettlecap::atPath(nettlecap::SystemCall::changeMode, path, nullptr,
                             [&] { return __real_chmod(path, mode); });
}
}
