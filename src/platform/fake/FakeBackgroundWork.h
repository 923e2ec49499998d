#pragma once

#include "platform/Time.h"

#include <deque>

namespace nettlecap {

/// Jobs wait until the test runs them; the task that a job returns is posted, so it runs
/// when time is next advanced.
class FakeBackgroundWork final : public BackgroundWork {
public:
    explicit FakeBackgroundWork(Scheduler& scheduler) : scheduler_(scheduler) {}

    void run(std::function<Task()> job) override { waiting_.push_back(std::move(job)); }

    void runNext();  ///< the oldest job, if one waits
    void runAll();
    std::size_t waitingJobs() const { return waiting_.size(); }

private:
    Scheduler& scheduler_;
    std::deque<std::function<Task()>> waiting_;
};

}  // namespace nettlecap
