#pragma once

#include "platform/Time.h"

#include <map>

namespace nettlecap {

/// Time that moves only when a test says so. It counts whole nanoseconds, so that a limit
/// of 2 s is met exactly and 2.001 s is past it.
class FakeTime final : public Clock, public Scheduler {
public:
    /// Runs what falls due on the way, each task at its own time; also what such a task
    /// gives that falls due by then. `advance(0s)` runs what was posted.
    void advance(Seconds time);
    /// Sets the wall clock alone, as a user does: uptime and tasks take no notice.
    void setNow(Date now);

    void post(Task task) override;
    void after(Seconds delay, Task task) override;
    Subscription every(Seconds interval, Task task) override;

    Date now() const override;
    Uptime uptime() const override { return uptime_; }
    std::size_t waitingTasks() const { return due_.size(); }

private:
    using Nanoseconds = std::chrono::nanoseconds;

    void repeatAt(Nanoseconds due, Nanoseconds interval, const std::shared_ptr<Task>& task);

    Nanoseconds uptime_{0};
    Date bootedAt_{800'000'000};            // 9 May 2026
    std::multimap<Nanoseconds, Task> due_;  // equal keys keep the order in which they came
};

}  // namespace nettlecap
