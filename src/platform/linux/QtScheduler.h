#pragma once

#include "platform/Time.h"

namespace nettlecap {

class TaskReceiver;

/// The main loop of the Qt application, which must exist. Nothing runs before its time;
/// after a stall or a sleep a repeated task runs once and not for every time it missed.
class QtScheduler final : public Scheduler {
public:
    QtScheduler();
    ~QtScheduler() override;  ///< what waits is dropped

    void post(Task task) override;
    void after(Seconds delay, Task task) override;
    Subscription every(Seconds interval, Task task) override;

private:
    std::unique_ptr<TaskReceiver> loop_;
};

}  // namespace nettlecap
