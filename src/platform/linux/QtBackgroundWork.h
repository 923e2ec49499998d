#pragma once

#include "platform/Time.h"

class QThreadPool;

namespace nettlecap {

class TaskReceiver;

/// Two threads that come and go with the work. Needs the main loop of the Qt application.
class QtBackgroundWork final : public BackgroundWork {
public:
    QtBackgroundWork();
    /// Waits for the jobs that run; the others, and every task, are dropped.
    ~QtBackgroundWork() override;

    void run(std::function<Task()> job) override;

private:
    std::unique_ptr<TaskReceiver> mainThread_;
    std::unique_ptr<QThreadPool> threads_;
};

}  // namespace nettlecap
