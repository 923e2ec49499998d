#pragma once

#include "platform/Signal.h"

namespace nettlecap {

class Clock {
public:
    virtual ~Clock() = default;

    virtual Date now() const = 0;
    virtual Uptime uptime() const = 0;  ///< never jumps, whatever is done to the clock
};

/// The main loop. Tasks due at one time run in the order they were given.
class Scheduler {
public:
    virtual ~Scheduler() = default;

    virtual void post(Task task) = 0;                  ///< soon, never within the call
    virtual void after(Seconds delay, Task task) = 0;  ///< never cancelled: guard it and give it a token
    [[nodiscard]] virtual Subscription every(Seconds interval, Task task) = 0;
};

class BackgroundWork {
public:
    virtual ~BackgroundWork() = default;

    /// `job` runs off the main thread; the task it returns runs on it.
    virtual void run(std::function<Task()> job) = 0;
};

}  // namespace nettlecap
