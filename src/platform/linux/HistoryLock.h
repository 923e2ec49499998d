#pragma once

#include "platform/linux/FileDescriptor.h"

namespace nettlecap {

/// Held while this process writes the history in a folder, so that no other does. The
/// kernel lets go of it when the process ends, however it ends.
class HistoryLock {
public:
    /// Absent: another process, or another lock of this one, has it.
    static Result<std::optional<HistoryLock>> take(const Path& folder);

private:
    explicit HistoryLock(FileDescriptor file) : file_(std::move(file)) {}

    FileDescriptor file_;
};

}  // namespace nettlecap
