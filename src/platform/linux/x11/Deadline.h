#pragma once

#include "platform/Signal.h"
#include "platform/Time.h"

namespace nettlecap {

/// A moment after which something has waited too long. It may be put off with every piece
/// that arrives: the scheduler is asked again only when it would come sooner.
class Deadline {
public:
    Deadline(Scheduler& scheduler, Clock& clock, Task missed)
        : scheduler_(scheduler), clock_(clock), missed_(std::move(missed)) {}

    void set(Seconds fromNow);
    void clear() { due_.reset(); }

private:
    void wakeAt(Uptime time);
    void wake();

    Scheduler& scheduler_;
    Clock& clock_;
    Task missed_;
    std::optional<Uptime> due_;
    std::optional<Uptime> waking_;
    int generation_ = 0;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
