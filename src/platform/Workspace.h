#pragma once

#include "platform/Signal.h"

namespace nettlecap {

struct RunningApplication {
    std::optional<std::int64_t> processIdentifier;
    std::optional<std::string> localizedName;
    std::optional<std::string> bundleIdentifier;
    std::uint64_t handle = 0;  ///< the backend's own, such as the window in front

    bool operator==(const RunningApplication&) const = default;
};

/// The applications of the session, and which of them is in front.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// Brings its window to the front, with the keyboard; nothing happens if it is gone.
    virtual void activate(const RunningApplication& application) = 0;

    virtual RunningApplication current() const = 0;  ///< this program
    /// Absent: nothing is in front, or the system does not tell.
    virtual std::optional<RunningApplication> frontmostApplication() const = 0;
    virtual bool isTerminated(const RunningApplication& application) const = 0;

    /// Tells of each application that comes to the front, this program included.
    virtual Subscription onActivation(std::function<void(const RunningApplication&)> handler) = 0;
};

}  // namespace nettlecap
