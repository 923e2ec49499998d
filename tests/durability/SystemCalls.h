#pragma once

#include "platform/Values.h"

namespace nettlecap {

enum class SystemCall {
    create,  ///< a file that is not there yet
    openFile,
    openFolder,
    changeMode,
    write,
    flushFile,
    flushFolder,
    close,
    rename,
    link,
    remove,
    makeFolder
};

/// One call to the system that has to do with the watched folder.
struct DiskCall {
    SystemCall call = SystemCall::write;
    Path path;               ///< of what is acted on; of a rename or link the name it has already
    Path newPath;            ///< of a rename or link
    std::string_view bytes;  ///< of a write
};

/// Hears of every call, and may have it go wrong.
class SystemCallWatcher {
public:
    enum class Course { asUsual, fails, isOverQuota, succeedsAndSaysItFailed, writesHalf };

    virtual ~SystemCallWatcher() = default;

    virtual Course before(const DiskCall&) { return Course::asUsual; }
    virtual void after(const DiskCall&) {}  ///< when it was carried out; a write with what it wrote
};

/// While it lives, the watcher hears of the calls that the program's own code makes below
/// `root`. Flushes are only pretended: what they promise is the watcher's to know. The test
/// must be linked with --wrap for each of the calls. One at a time.
class WatchedSystemCalls {
public:
    WatchedSystemCalls(Path root, SystemCallWatcher& watcher);
    WatchedSystemCalls(const WatchedSystemCalls&) = delete;
    WatchedSystemCalls& operator=(const WatchedSystemCalls&) = delete;
    ~WatchedSystemCalls();
};

}  // namespace nettlecap
